' A member of Nothing is 91, of anything else that is no object 424.
Dim x, o
On Error Resume Next
Set o = Nothing
o.Foo
Ok Err.Number = 91, "a member of Nothing"
Err.Clear
With o
    .Bar = 1
End With
Ok Err.Number = 91, "inside With"
Err.Clear
x = 5
x.y = 1
Ok Err.Number = 424, "a member of a number"
