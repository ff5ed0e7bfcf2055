' Adding days and counting them; a date taken apart and put together.
Dim i, d
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
