' FormatDateTime.
Gives "FormatDateTime(#1/31/2026 2:05:10 PM#)", "String", "1/31/2026 2:05:10 PM"
Gives "FormatDateTime(#1/31/2026 2:05:10 PM#, vbShortDate)", "String", "1/31/2026"
Gives "FormatDateTime(#1/31/2026 2:05:10 PM#, vbLongDate)", "String", "Saturday, January 31, 2026"
Gives "FormatDateTime(#1/31/2026 2:05:10 PM#, vbLongTime)", "String", "2:05:10 PM"
Gives "FormatDateTime(#1/31/2026 2:05:10 PM#, vbShortTime)", "String", "14:05"
Fails 5, "x = FormatDateTime(Now, 9)"
Fails 13, "x = FormatDateTime(Null)"
