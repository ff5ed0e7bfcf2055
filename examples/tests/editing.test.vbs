' The layout of a panel is rearranged by mouse and menu, and every edit is taken back.
' scheme: ../weir.scheme
' window: Gates
' logger: sim:?seed=7
Option Explicit

' The control of a type that has room around it, by its place.
Function First(kind)
    Dim i
    First = 0
    For i = 1 To Window.Controls.Count
        If Window.Controls(i).ControlType = kind Then
            First = i
            Exit Function
        End If
    Next
End Function

Function Entry(menu, caption)
    Dim i
    Set Entry = Nothing
    For i = 1 To menu.Count
        If menu.Item(i).Caption = caption Then Set Entry = menu.Item(i)
    Next
End Function

' Right-clicks the panel itself, where neither a control nor a figure lies, and gives the menu that comes up.
Function PanelMenu()
    Dim x, y
    For y = 60 To 6000 Step 300
        For x = 60 To 9000 Step 300
            Host.Press x, y, 2
            If Not Host.Menu Is Nothing Then
                If Host.Menu.Item(1).Caption = "&Add" Then
                    Set PanelMenu = Host.Menu
                    Exit Function
                End If
            End If
        Next
    Next
    Set PanelMenu = Nothing
End Function

Dim count, button, left, top, menu
count = Window.Controls.Count
button = First("VB.CommandButton")
Host.Assert button > 0, "the window has a command button"
Host.Assert Host.Menu Is Nothing, "no menu is open before anything was pressed"
Host.Assert Not Host.Handles(button).Item(1).Visible, "a locked panel shows no handles"

Window.LockPositions = False
With Host.Handles(button)
    Host.Assert .Count = 8, "a command button has eight handles"
    Host.Assert .Item(1).Visible, "they are shown while positions are unlocked"
    Host.Assert .Item(1).Cursor = 32642 And .Item(4).Cursor = 32644, "each with its cursor"
End With
Host.Assert Host.Handles(First("VB.Label")).Count = 0, "a label has no window and no handles"

left = Window.Controls(button).Left
top = Window.Controls(button).Top
Host.Drag left + 300, top + 200, left + 1500, top + 800
Host.Assert Window.Controls(button).Left > left, "a dragged button moves"
Host.Assert Window.UndoText = "Move", "the move is one step"
Host.Undo
Host.Assert Window.Controls(button).Left = left And Window.Controls(button).Top = top, "undo puts it back"
Host.Redo
Host.Assert Window.Controls(button).Left > left, "redo moves it again"
Host.Undo

Host.Press left + 300, top + 200, 2
Set menu = Host.Menu
Host.Assert menu.Count = 5, "the control's menu has five entries, the separator among them"
Host.Assert menu.Item(3).Caption = "", "a separator has no caption"
Entry(menu, "&Copy").Choose
Host.Assert Host.Menu Is Nothing, "choosing closes the menu"
Host.Assert InStr(Host.Clipboard, "<CONTROL>") = 1, "the clipboard holds the control's element"

Set menu = PanelMenu
Host.Assert Entry(menu, "&Add").Menu.Count > 6, "the panel's menu offers the new controls"
Host.Assert Not Entry(menu, "&Lock Positions").Checked, "and tells that positions are not locked"
Entry(menu, "&Paste").Choose
Host.Assert Window.Controls.Count = count + 1, "the copy is pasted"
Entry(Entry(PanelMenu, "&Add").Menu, "&Label").Choose
Host.Assert Window.Controls(count + 2).Control.Caption = "New Label", "a new label says that it is one"
Host.Clipboard = "no control"
Entry(PanelMenu, "&Paste").Choose
Host.Assert Window.Controls.Count = count + 2, "a text that is no control pastes nothing"

Do While Window.CanUndo
    Host.Undo
Loop
Host.Assert Window.Controls.Count = count And Window.EditCount = 0, "every edit can be taken back"
Host.Hover left + 300, top + 200

' The same by keys alone: the Tab key walks the controls, arrows move, with Ctrl they size, Delete removes.
Const TabKey = 9, RightKey = 39, DeleteKey = 46, Shift = 1, Ctrl = 2
Window.KeyboardEditing = True
Host.Hover left + 300, top + 200
Host.Key RightKey, Shift, 3
Host.Assert Window.Controls(button).Left = left + 45, "three pixels to the right"
Host.Key RightKey, Shift + Ctrl
Host.Assert Window.EditCount = 4, "each key is a step"
Host.Key TabKey
Host.Key DeleteKey
Host.Assert Window.Controls.Count = count - 1, "the next control is removed"
Do While Window.CanUndo
    Host.Undo
Loop
On Error Resume Next
Host.Key 1000
Host.Assert Err.Number = 5, "a code that no key has"
