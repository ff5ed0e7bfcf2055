' An element that is passed around lives as long as its array has it.
Dim g()
ReDim g(2)
g(2) = 1
Sub Shrink(e)
    ReDim g(0)
    On Error Resume Next
    e = 5
    Ok Err.Number = 9, "an element that is gone"
End Sub
Shrink g(2)
Sub Copier(e)
    Dim keep
    keep = g
    e = "new"
    Ok IsEmpty(keep(1)), "a copy taken before does not see the change"
    Same g(1), "new", "the array does"
End Sub
ReDim g(2)
Copier g(1)
