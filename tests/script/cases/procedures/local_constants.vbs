' A Const of a procedure is visible before its line, too.
Sub ConstLocal
    Same Inner, 5, "a local Const before its line"
    Const Inner = 5
    On Error Resume Next
    Inner = 6
    Ok Err.Number = 501, "assigning a local Const"
End Sub
ConstLocal
