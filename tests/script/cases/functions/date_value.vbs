' DateValue and TimeValue.
Gives "DateValue(""1/31/2026 2:05 PM"")", "Date", "1/31/2026"
Gives "TimeValue(""1/31/2026 2:05 PM"")", "Date", "2:05:00 PM"
Fails 13, "x = DateValue(""abc"")"
Fails 94, "x = DateValue(Null)"
Fails 94, "x = TimeValue(Null)"
