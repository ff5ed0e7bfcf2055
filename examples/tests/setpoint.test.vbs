' The stage to hold: set with the form, shown in its text box with three decimals.
' scheme: ../weir.scheme
' window: Overview
' logger: sim:?seed=7&period=100&connect=50&wave.296=const:1850&wave.298=const:1
Option Explicit

Function Find(kind, bind)
    Dim i
    For i = 1 To Window.Controls.Count
        If Window.Controls(i).ControlType = kind And Window.Controls(i).BindTo = bind Then
            Set Find = Window.Controls(i)
            Exit Function
        End If
    Next
    Set Find = Nothing
End Function

Dim box, button, waited
Set box = Find("VB.TextBox", "Overview|SETPOINT")
Set button = Find("VB.CommandButton", "Overview|SETPOINT")
Host.Assert Not box Is Nothing, "the stage to hold has a text box"
Logger.AddAction 8
Logger.Link.Connect
Do Until box.Control.Text = "1.850" Or waited > 100
    Host.Wait 50
    waited = waited + 1
Loop
Host.Assert box.Control.Text = "1.850", "the box shows the value of the logger"

Host.Answer "2.1"
Host.Click button
Host.Wait 500
Host.Assert box.Control.Text = "2.100", "the value that was set: " & box.Control.Text

Host.Answer "1.9"
Host.DoubleClick box
Host.Wait 500
Host.Assert box.Control.Text = "1.900", "a double click sets the channel too: " & box.Control.Text

Dim auto
Set auto = Find("VB.CheckBox", "Overview|AUTO")
Host.Assert auto.Control.Value = 1, "level control is automatic"
Host.Click auto
Host.Wait 500
Host.Assert auto.Control.Value = 0, "a click on the check box turns it off"
Host.Assert auto.Control.Caption = "Level control by hand", "and its caption says so: " & auto.Control.Caption
Host.Assert InStr(Host.Node(auto), "<TYPE>VB.CheckBox</TYPE>") > 0, "its document text can be read"
Host.Assert Host.Format(1234.5, "#,##0.0") = "1,234.5" And Host.Val("12 abc") = 12, "texts and numbers"
Host.Assert Host.Format(#1/4/2026#, "ww") = "2" And Host.Format(#1/4/2026#, "ww", vbMonday, vbFirstFourDays) = "1", "weeks"
