' Laws that hold for many values.
Dim i, j, a, b, d, s
' Rounding to whole numbers goes half to even everywhere alike
For i = -10 To 10
    a = i + 0.5
    b = CLng(a)
    Ok b Mod 2 = 0 And Abs(b - a) = 0.5, "CLng(" & a & ") is " & b
    Same CLng(CInt(a)), b, "CInt agrees with CLng on " & a
    Same CLng(Round(a)), b, "Round agrees with CLng on " & a
Next
' Whole division and remainder belong together
For i = -7 To 7 Step 2
    For j = -3 To 3
        If j <> 0 Then Same (i \ j) * j + (i Mod j), i, i & " \ and Mod " & j
    Next
Next
' A text of a number reads back
For Each a In Array(0, 1, -1, 0.5, -0.25, 123456789, 1E15, 1E-7, 32768, 2147483648, 0.1, 1 / 3)
    Ok Abs(CDbl(CStr(a)) - a) <= Abs(a) * 1E-14, "CDbl(CStr(" & a & "))"
    Ok IsNumeric(CStr(a)), a & " reads as a number"
Next
' Hex and Oct read back
For Each a In Array(0, 1, 255, 32767, 70000, 2147483647)
    Same CLng("&h" & Hex(a)), CLng(a), "Hex(" & a & ")"
    Same CLng("&o" & Oct(a)), CLng(a), "Oct(" & a & ")"
Next
' Adding days and counting them
For i = -40 To 40 Step 7
    d = DateAdd("d", i, #2/20/2024#)
    Same DateDiff("d", #2/20/2024#, d), CLng(i), "days " & i
    Same DateSerial(Year(d), Month(d), Day(d)), d, "taken apart and put together: " & d
    Same CDate(CStr(d)), d, "a date reads back: " & d
    Same Weekday(d), (Weekday(#2/20/2024#) - 1 + i + 70) Mod 7 + 1, "weekday of " & d
    Same DateValue(FormatDateTime(d, vbLongDate)), d, "a long date reads back: " & d
Next
For i = 0 To 23
    d = TimeSerial(i, 59 - i, i)
    Same Hour(d) & ":" & Minute(d) & ":" & Second(d), i & ":" & (59 - i) & ":" & i, "time " & i
Next
' Texts
For i = 0 To 12
    s = "hello world."
    Same Left(s, i) & Mid(s, i + 1), s, "Left and Mid at " & i
    Same Left(s, 12 - i) & Right(s, i), s, "Left and Right at " & i
    Same StrReverse(StrReverse(Left(s, i))), Left(s, i), "reversed twice: " & i
    Same Len(Space(i) & String(i, "x")), CLng(2 * i), "lengths: " & i
    Same Unescape(Escape(Left(s, i))), Left(s, i), "escaped and back: " & i
    Same Join(Split(Left(s, i), "o"), "o"), Left(s, i), "split and joined: " & i
Next
For i = 32 To 126 Step 7
    Same Asc(Chr(i)), i, "Asc(Chr(" & i & "))"
    Same AscW(ChrW(i * 100)), CInt(i * 100 + 65536 * (i * 100 > 32767)), "AscW(ChrW(" & i * 100 & "))"
Next
For i = 128 To 255 Step 9
    Same Asc(Chr(i)), i, "the code page goes both ways: " & i
Next
' Comparison is the same from both sides
For Each a In Array(1, 2.5, -3, "a", "B", True, CCur(7))
    For Each b In Array(1, 2.5, -3, "a", "B", True, CCur(7))
        Same a < b, b > a, a & " < " & b
        Same a <= b, b >= a, a & " <= " & b
        Same a = b, b = a, a & " = " & b
        Same a <> b, Not (b = a), a & " <> " & b
    Next
Next
' Logic against its tables
For Each a In Array(True, False)
    For Each b In Array(True, False)
        Same a Imp b, (Not a) Or b, "Imp"
        Same a Eqv b, Not (a Xor b), "Eqv"
        Same Not (a And b), (Not a) Or (Not b), "And and Or"
    Next
Next
