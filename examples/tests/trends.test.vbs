' The trend window of the demo: empty until records come, then a line for each channel that its filter shows.
' scheme: ../weir.scheme
' window: Trends
' logger: sim:?seed=7&period=50&log=100&connect=50
Option Explicit

Dim graph, waited
Set graph = Window.Controls("@6")
Host.Assert Host.Graph(graph).Series.Count = 0, "nothing is drawn before the first record"

Host.Click Window.Controls("@4")
Do Until Host.Graph(graph).Series.Count > 0 Or waited > 200
    Host.Wait 50
    waited = waited + 1
Loop
' What is recorded is stored, and seen, within a second or two.
waited = 0
Do Until Host.Graph(graph).Series.Item(1).Points > 2 Or waited > 200
    Host.Wait 50
    waited = waited + 1
Loop

Dim shown, series, i
Set shown = Host.Graph(graph)
Host.Assert shown.Series.Count = 53, "every channel of the logger is there: " & shown.Series.Count
Set series = shown.Series.Item(1)
Host.Assert series.Label = "Stage upstream", "the first channel is " & series.Label
Host.Assert series.Units = "m", "its unit is " & series.Units
Host.Assert series.Visible, "it is shown"
Host.Assert series.Points >= 2, "it has points: " & series.Points
Host.Assert series.Value(Now + 1) > 0, "its latest value"
Host.Assert IsEmpty(series.Value(DateSerial(1999, 1, 1))), "there was none long ago"

Dim visible
visible = ""
For i = 1 To shown.Series.Count
    If shown.Series.Item(i).Visible Then visible = visible & i & " "
Next
Host.Assert visible = "1 2 4 53 ", "the filter shows these: " & visible
Host.Assert shown.Limits.Upper = 2 And shown.Limits.Lower = 0.9, "both limits are there"
Host.Assert shown.Limits.UpperLabel = "Spill level", "the upper one has its label"
Host.Assert shown.Limits.LowerLabel = "Intake runs dry", "the lower one has its label"
Host.Assert InStr(shown.Heading, "Last ") = 1, "the heading tells the records: " & shown.Heading

' The form of the limits; what it stores is seen with the next record.
Sub Lower(form)
    form.Field("txtUpper").Text = "1.5 m"
    form.Field("txtUpperLabel").Text = "Gates open"
    form.Field("cmdOK").Click
End Sub
Host.OnForm "frmGraph", "Lower"
Host.Edit graph
waited = 0
Do Until Host.Graph(graph).Limits.Upper = 1.5 Or waited > 200
    Host.Wait 50
    waited = waited + 1
Loop
Host.Assert Host.Graph(graph).Limits.Upper = 1.5, "the graph has the new limit"
Host.Assert Host.Graph(graph).Limits.UpperLabel = "Gates open", "and its label"

' What is saved: an element for each channel but the last.
Dim stored
stored = Host.Node(graph)
Host.Assert InStr(stored, "<CHAN52>0</CHAN52>") > 0, "the filter is stored"
Host.Assert InStr(stored, "<CHAN53>") = 0, "but for the last channel"
