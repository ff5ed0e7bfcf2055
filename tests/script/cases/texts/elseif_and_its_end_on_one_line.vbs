' End If may follow the statements of an ElseIf on its line; after any other line it stands first.
Dim r
If False Then
    r = 1
ElseIf True Then r = 3 End If
Same r, 3, "ElseIf, statement and End If"
If False Then
    r = 1
ElseIf True Then r = 4 : r = r + 1 End If
Same r, 5, "with two statements"
If False Then
    r = 1
ElseIf True Then r = 6
    r = r + 1
End If
Same r, 7, "or with more lines"
Fails 1042, "If False Then" & vbLf & "ElseIf True Then y = 1" & vbLf & "y = 2 End If"
