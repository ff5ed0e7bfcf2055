' A wrong index or rank is 9, an index on what is no array 13.
Dim x
Dim a(3), m(2, 3), d(), s
Fails 9, "x = a(4)"
Fails 9, "a(4) = 1"
Fails 9, "x = a(-1)"
Fails 9, "x = a(1, 1)"
Fails 9, "x = m(1)"
Fails 9, "x = d(0)"
Fails 9, "d(0) = 1"
Fails 9, "x = UBound(d)"
Fails 9, "x = UBound(a, 2)"
Fails 9, "x = UBound(a, 0)"
Fails 13, "x = UBound(5)"
Fails 13, "x = s(1)"
Fails 13, "s(1) = 1"
Fails 9, "x = a()"
Fails 13, "x = s()"
