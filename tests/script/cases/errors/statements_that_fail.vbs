' A failing statement does nothing; one that succeeds leaves Err alone.
Dim x
On Error Resume Next
x = CInt("abc") + 1
Ok Err.Number = 13, "13"
x = 3
Ok Err.Number = 13, "a statement that succeeds leaves Err alone"
Err.Clear
Function Fail(n)
    Err.Raise n
    Fail = 1
End Function
x = "old"
x = Fail(7) + Fail(8)
Ok Err.Number = 7, "the first error ends the statement"
Same x, "old", "nothing is assigned"
Err.Clear
Dim k
For k = 1 To 3
    x = 1 / 0
Next
Same k, 4, "a loop goes on"
