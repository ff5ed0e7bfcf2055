Function Main
    Dim a(), i, sum
    ReDim a(999999)
    For i = 0 To 999999
        a(i) = i * 2
    Next
    sum = 0
    For i = 0 To UBound(a)
        sum = sum + a(i)
    Next
    Main = sum
End Function
