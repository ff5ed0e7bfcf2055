' ElseIf, Else, and statements right after Else.
Dim r
If False Then
    r = 1
ElseIf Null Then
    r = 2
ElseIf True Then
    r = 3
Else
    r = 4
End If
Same r, 3, "ElseIf"
If False Then
    r = 1
Else r = 5
End If
Same r, 5, "a statement right after Else"
If False Then
    r = 1
Else r = 6 End If
Same r, 6, "and End If right after it"
If True Then
End If
Same r, 6, "an empty block does nothing"
