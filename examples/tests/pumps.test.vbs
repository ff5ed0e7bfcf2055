' The pumps of the demo: data arrives, a pump is started and stopped, all are stopped by the script button.
' scheme: ../weir.scheme
' window: Pumps
' logger: sim:?seed=7&period=100&connect=50&wave.299=const:1&wave.314=const:1&wave.330=const:0
Option Explicit

Function Place(caption)
    Dim i
    For i = 1 To Window.Controls.Count
        If Window.Controls(i).ControlType = "VB.CommandButton" Then
            If Window.Controls(i).Control.Caption = caption Then
                Place = i
                Exit Function
            End If
        End If
    Next
    Place = 0
End Function

Function State(pump)
    State = Scheme.Windows("Pumps").Item("P" & pump & "STATE").Value
End Function

Dim waited
Host.Assert Place("&Connect") > 0, "the connect button says Connect while nothing is connected"
Host.Click Place("Start")
Host.Assert Host.Boxes.Count = 1, "a click without a connection is answered by a box"
Host.Assert Host.Boxes.Item(1).Icon = vbInformation, "the box has the information icon"

Host.Click Place("&Connect")
Do Until Logger.Link.State = 2 Or waited > 100
    Host.Wait 50
    waited = waited + 1
Loop
Host.Assert Logger.Link.State = 2, "the logger is connected"
Host.Assert Place("&Disconnect") > 0, "the button says Disconnect now"

waited = 0
Do While IsEmpty(State(1)) And waited < 100
    Host.Wait 50
    waited = waited + 1
Loop
Host.Assert State(1) = 1, "pump 1 runs"

Host.Answer "No"
Host.Click Place("Stop all pumps")
Host.Assert Host.Boxes.Count = 2, "stopping all pumps asks first"
Host.Assert Host.Boxes.Item(2).Text = "Stop all three pumps?", "it asks this: " & Host.Boxes.Item(2).Text
Host.Wait 300
Host.Assert State(1) = 1, "No stops nothing"

Host.Answer "Yes"
Host.Click Place("Stop all pumps")
Host.Wait 500
Host.Assert State(1) = 0, "pump 1 is stopped"
Host.Assert State(2) = 0, "pump 2 is stopped"

Host.Click Place("Start")
Host.Wait 500
Host.Assert State(1) = 1, "pump 1 was started by its own button"
