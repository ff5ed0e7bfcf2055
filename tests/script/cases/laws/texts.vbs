' What cuts texts and what joins them.
Dim i, s
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
