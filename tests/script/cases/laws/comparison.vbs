' Comparison is the same from both sides.
Dim a, b
For Each a In Array(1, 2.5, -3, "a", "B", True, CCur(7))
    For Each b In Array(1, 2.5, -3, "a", "B", True, CCur(7))
        Same a < b, b > a, a & " < " & b
        Same a <= b, b >= a, a & " <= " & b
        Same a = b, b = a, a & " = " & b
        Same a <> b, Not (b = a), a & " <> " & b
    Next
Next
