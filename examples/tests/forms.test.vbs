' Controls are set up by their forms, field by field, and every Apply is taken back.
' scheme: ../weir.scheme
' window: Gates
' logger: sim:?seed=7
Option Explicit

Dim opened

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

' The row of a list with this text in front.
Function RowOf(field, text)
    Dim i
    RowOf = -1
    For i = 0 To field.ListCount - 1
        If Left(field.List(i), Len(text)) = text Then
            RowOf = i
            Exit Function
        End If
    Next
End Function

' The check box: Esc applies and leaves its form open.
Dim box
box = First("VB.CheckBox")
Host.OnForm "frmCheckBox", "SetUpBox"
Host.Edit box
Host.Assert opened = "frmCheckBox", "the form of the check box opens"
Host.Assert Window.Controls(box).ToolTipText = "By itself", "what was applied is there"
Host.Undo
Host.Assert Window.Controls(box).ToolTipText <> "By itself", "an Apply is one step"
Host.Redo

Sub SetUpBox(form)
    opened = form.Name
    Host.Assert form.Title = "Check Box Setup", "its title"
    Host.Assert form.Width = 5400 And form.Height = 6615, "its client area"
    Host.Assert form.Field("lvChannels").List(0) = "None" & vbTab, "the first row is None"
    form.Tab = 1
    form.Field("txtTooltip").Text = "By itself"
    form.Keys Chr(13)
    form.Keys Chr(27)
    Host.Assert form.IsOpen, "Esc applies and Enter presses nothing"
    form.Field("txtTooltip").Text = "Lost"
    form.Field("cmdCancel").Click
    Host.Assert Not form.IsOpen, "Cancel closes"
End Sub

' The button: another action, stored for the action engine.
Dim button
button = First("VB.CommandButton")
Host.OnForm "frmCmd", "SetUpButton"
Host.Edit button
Host.Assert InStr(Host.Node(button), "<PUTADDRESS>12</PUTADDRESS>") > 0, "an address counts by its leading number"
Host.Undo

Sub SetUpButton(form)
    opened = form.Name
    form.Field("cboActions").ListIndex = 1
    Host.Assert form.Field("fraPut").Enabled And Not form.Field("fraSet").Enabled, "the frame of the action"
    form.Field("txtAddress").Text = "12abc"
    form.Field("cmdOK").Click
End Sub

' The label: a caption of its own, in a font and a colour that are picked.
Dim label
label = First("VB.Label")
Host.OnForm "frmChannel", "SetUpLabel"
Host.Answer "font:DejaVu Serif,14,bold"
Host.Answer "colour:255"
Host.Edit label
Host.Assert Window.Controls(label).Control.Caption = "By hand", "the caption is the control's"
Host.Assert Window.Controls(label).Control.Font.Name = "DejaVu Serif", "so is the font"
Host.Assert Window.Controls(label).ForeColour = 255, "and the colour"
Host.Undo
Host.Assert Window.Controls(label).Control.Caption <> "By hand", "caption and all are taken back"
Host.Assert Window.Controls(label).Control.Font.Name <> "DejaVu Serif", "with the font"

Sub SetUpLabel(form)
    opened = form.Name
    form.Field("cboBind").ListIndex = 0
    form.Field("txtCaption").Text = "By hand"
    form.Tab = 1
    form.Field("cmdFont").Click
    Host.Assert form.Field("lblExample").FontName = "DejaVu Serif", "the example shows the font"
    form.Field("cmdForeCol").Click
    Host.Assert Host.Boxes.Item(Host.Boxes.Count).Text = "Select text colour", "the picker's title"
    form.Field("cmdOK").Click
End Sub

' The panel's own form: colours and font through their pickers, the grid, and the frame that its box switches.
Host.OnForm "frmBenchProp", "SetUpPanel"
Host.Answer "colour:8388608"
Host.Answer "colour:12632256"
Host.Answer "font:DejaVu Serif,11"
Dim grid
grid = Window.GridSize
Host.WindowProperties
Host.Assert opened = "frmBenchProp", "the form of the panel opens"
Host.Assert Window.ForeColor = 8388608 And Window.BackColor = 12632256, "both colours are the panel's"
Host.Assert Window.Font.Name = "DejaVu Serif" And Window.Font.Size = 11, "so is the font"
Host.Assert Window.GridSize = 75 And Not Window.SnapToGrid, "and the grid"
Host.Undo
Host.Assert Window.GridSize = grid And Window.SnapToGrid, "all of it is one step"

Sub SetUpPanel(form)
    opened = form.Name
    Host.Assert form.Title = "Window Properties", "its title"
    Host.Assert form.Width = 4560 And form.Height = 4080, "its client area"
    form.Field("cmdForeCol").Click
    form.Field("cmdBackCol").Click
    Host.Assert Host.Boxes.Item(Host.Boxes.Count).Text = "Select text colour", "the same title for both colours"
    form.Field("cmdFont").Click
    Host.Assert form.Field("txtExample").FontName = "DejaVu Serif", "the example shows the font"
    Host.Assert form.Field("txtExample").BackColor = 12632256, "and the colour"
    form.Tab = 1
    form.Field("cbEnablePicture").Click
    form.Field("cbEnablePicture").Click
    Host.Assert Not form.Field("fraPicture").Enabled And form.Field("cbSnap").Enabled, "a frame is switched alone"
    form.Field("cbEnablePicture").Click
    form.Field("cbSnap").Click
    form.Field("txtGrid").Text = "7a5"
    Host.Assert form.Field("txtGrid").Text = "75", "the grid takes digits"
    form.Field("cbEnablePicture").Click
    form.Keys Chr(27)
    Host.Assert form.IsOpen, "Esc applies"
    form.Close
End Sub

' A form that nobody fills in is recorded and closed.
Host.OnForm "frmChannel", ""
opened = ""
Dim before
before = Host.Boxes.Count
Host.Edit label
Host.Assert opened = "" And Host.Boxes.Count = before + 1, "a form without a procedure"
