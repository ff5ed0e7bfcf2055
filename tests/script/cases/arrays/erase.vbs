' Erase clears a fixed array, frees any other, and takes nothing else.
Dim x
Dim a(3), d(), s
a(0) = 1
Erase a
Ok IsEmpty(a(0)), "Erase clears a fixed array"
Same UBound(a), CLng(3), "and keeps its bounds"
ReDim d(3)
Erase d
Fails 9, "x = UBound(d)"
Fails 13, "Erase s"
s = 5
Fails 13, "Erase s"
