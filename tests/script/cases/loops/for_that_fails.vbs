' A failing bound runs the body once, a text in the variable ends the loop.
Dim i, n
On Error Resume Next
n = 0
i = 77
Err.Clear
For i = 1 To 1 / 0
    n = n + 1
    Same i, 77, "a failing bound leaves the variable untouched"
Next
Same n, 1, "a failing bound: the body runs once"
Ok Err.Number = 92, "and Next raises 92"
Err.Clear
n = 0
For i = 1 To 5
    n = n + 1
    i = "abc"
Next
Same n, 1, "a variable set to text ends the loop"
Ok Err.Number = 13, "with 13"
