' A procedure may stand inside a block; it is declared whether the block runs or not.
Dim r, i
If False Then
    Sub InIf
        r = "if"
    End Sub
End If
InIf
Same r, "if", "in an If that does not run"
For i = 1 To 2
    Public Function InFor(n)
        InFor = n * 10
    End Function
    r = InFor(i)
Next
Same r, 20, "in a loop, with Public"
With Err
    Sub InWith(v)
        r = v
    End Sub
    InWith .Number
End With
Same r, CLng(0), "in With"
Fails 1002, "Sub Outer1 : Sub Inner1 : End Sub : End Sub"
Fails 1002, "If True Then Sub OnTheLine : End Sub"
