' ReDim with and without Preserve; only the last dimension may change with it.
Dim d()
ReDim d(2)
d(0) = "p" : d(2) = "q"
ReDim Preserve d(4)
Same d(0) & d(2), "pq", "Preserve keeps elements"
Same UBound(d), CLng(4), "and grows"
ReDim Preserve d(1)
Same UBound(d), CLng(1), "and shrinks"
ReDim d(1)
Ok IsEmpty(d(0)), "without Preserve elements go"
ReDim d(1, 1)
d(1, 0) = 5
ReDim Preserve d(1, 4)
Same d(1, 0), 5, "the last dimension grows"
Fails 9, "ReDim Preserve d(2, 4)"
Fails 9, "ReDim Preserve d(3)"
ReDim d(-1)
Same UBound(d), CLng(-1), "ReDim x(-1) has no elements"
Fails 9, "ReDim d(-2)"
