Function Main
    Dim i, s
    For i = 1 To 100000
        s = s & "line " & i & vbLf
    Next
    Main = Len(s)
End Function
