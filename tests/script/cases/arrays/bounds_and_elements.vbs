' Elements by index, of one and of two dimensions; an index is rounded half to even.
Dim a(3), m(2, 3)
Same UBound(a), CLng(3), "upper bound"
Same LBound(a), CLng(0), "lower bound"
Same UBound(m, 2), CLng(3), "of the second dimension"
a(0) = 1 : a(3) = "x"
Same a(0) & a(3), "1x", "elements"
Ok IsEmpty(a(1)), "elements start Empty"
m(2, 3) = 7
Same m(2, 3), 7, "two dimensions"
Same a(0.5), 1, "an index is rounded half to even"
Same a("3"), "x", "a text that is a number is an index"
