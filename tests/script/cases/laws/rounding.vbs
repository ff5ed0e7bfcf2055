' Rounding to whole numbers goes half to even everywhere alike.
Dim i, a, b
For i = -10 To 10
    a = i + 0.5
    b = CLng(a)
    Ok b Mod 2 = 0 And Abs(b - a) = 0.5, "CLng(" & a & ") is " & b
    Same CLng(CInt(a)), b, "CInt agrees with CLng on " & a
    Same CLng(Round(a)), b, "Round agrees with CLng on " & a
Next
