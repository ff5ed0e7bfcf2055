Function Main
    Dim i
    For i = 1 To 10000000
    Next
    Main = i - 1
End Function
