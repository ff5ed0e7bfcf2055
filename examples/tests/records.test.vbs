' The log-buffer window of the demo: rows come with the records, newest first.
' scheme: ../weir.scheme
' window: Records
' logger: sim:?seed=7&period=50&log=100&connect=50
Option Explicit

Dim table, waited, before
Set table = Host.Table(Window.Controls("@6"))
before = table.Rows ' what a history has kept of earlier runs

Host.Click Window.Controls("@4")
Do Until table.Rows > before + 2 Or waited > 200
    Host.Wait 50
    waited = waited + 1
Loop
Host.Assert table.Rows > before + 2, "rows have come: " & table.Rows
Host.Assert table.Columns = 54, "the time and every channel: " & table.Columns
Host.Assert table.Cell(0, 1) = "Time" And table.Cell(0, 2) = "Stage upstream (m)", "the header: " & table.Cell(0, 2)
Host.Assert table.Cell(1, 1) >= table.Cell(2, 1), "the newest record is first"
Host.Assert Host.Val(table.Cell(1, 2)) > 0, "a value: " & table.Cell(1, 2)

Window.Controls("@6").Control.NewestFirst = False
Host.Assert table.Cell(1, 1) <= table.Cell(2, 1), "the oldest record is first"
