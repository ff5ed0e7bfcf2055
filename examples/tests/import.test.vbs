' A window of the terminal of former days becomes a panel, with the values of the logger in it.
' scheme: ../weir.scheme
' window: Overview
' logger: sim:?seed=7&period=100&connect=50&wave.270=const:1234
Option Explicit

Host.Assert Not Window.ImportKeel("weir.kel"), "the answer is False, by tradition"
Host.Assert Window.CurrentWindow.Key = "KEEL", "the import is the window that is shown"
Host.Assert Window.BackColor = RGB(0, 0, 128), "navy"
Host.Assert Window.ForeColor = RGB(255, 255, 0), "yellow"
Host.Assert Window.Font.Name = "Terminal", "in the letters of the terminal"
Host.Assert Window.Controls(1).Control.Caption = "&Connect", "a button to connect with"
Host.Assert Scheme.Windows("KEEL").Count = Window.Controls.Count - 1, "a label for each row"

Function LabelThatBegins(text)
    Dim entry
    For Each entry In Window.Controls
        If entry.ControlType = "VB.Label" Then
            If Left(entry.Control.Caption, Len(text)) = text Then
                Set LabelThatBegins = entry
                Exit Function
            End If
        End If
    Next
    Host.Assert False, "a label begins with " & text
    Set LabelThatBegins = Nothing
End Function

Dim water, title
Set title = LabelThatBegins("MILL CREEK WEIR")
Host.Assert title.Channel Is Nothing, "a title has no channel"
Set water = LabelThatBegins("WATER")
Host.Assert water.Channel.UseCount = 1, "a value is in use"
Host.Assert water.Channel.Units = Chr(248) & "C", "the code that a font of the DOS character set shows as a degree sign"
Host.Assert water.Left > title.Left, "its place is that of the grid"
Host.Assert water.Top > title.Top, "lines go down"

Dim waited
Host.Click Window.Controls(1)
Do While IsEmpty(water.Channel.Value) And waited < 200
    Host.Wait 50
    waited = waited + 1
Loop
Host.Wait 200
Host.Assert water.Control.Caption = "WATER .... 12.3 " & Chr(248) & "C", "label, value and units, not " & water.Control.Caption
Host.Assert Window.Controls(1).Control.Caption = "&Disconnect", "the button has connected"
