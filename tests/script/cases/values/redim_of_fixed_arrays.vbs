' A fixed array is locked, whatever bounds are asked for.
Dim fixed(3)
fixed(1) = "kept"
Fails 10, "ReDim fixed(5)"
Fails 10, "ReDim fixed(3)"
Fails 10, "ReDim Preserve fixed(5)"
Fails 10, "ReDim fixed(-2)"
Fails 10, "ReDim fixed(""abc"")"
Fails 10, "ReDim fixed(100000000)"
Fails 10, "ReDim fixed(1, 1)"
Same fixed(1), "kept", "and keeps its elements"
Sub Locally
    Dim own(1)
    On Error Resume Next
    ReDim own(2)
    Same Err.Number, CLng(10), "a local one too"
End Sub
Locally
