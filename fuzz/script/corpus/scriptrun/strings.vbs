Function Main
    Dim i, s, n
    s = "the quick brown fox jumps over the lazy dog"
    n = 0
    For i = 1 To 100000
        n = n + InStr(s, "lazy")
        n = n + Len(UCase(Mid(s, 5, 5)))
        n = n + Len(Replace(s, "fox", "panel"))
        If Left(s, 3) = "the" Then n = n + 1
        n = n + UBound(Split(s, " "))
    Next
    Main = n
End Function
