Function Main
    Dim i, x, y
    x = 0.5
    y = 0
    For i = 1 To 1000000
        x = x * 1.000001 + i / 3 - y
        y = y + i - 7
        If y > 1000000 Then y = y - 1000000
    Next
    Main = y
End Function
