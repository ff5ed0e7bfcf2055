' Year to Second, and Weekday.
Dim d
d = #1/31/2026 2:05:10 PM#
Same Year(d), 2026, "Year"
Same Month(d), 1, "Month"
Same Day(d), 31, "Day"
Same Hour(d), 14, "Hour"
Same Minute(d), 5, "Minute"
Same Second(d), 10, "Second"
Same Weekday(d), 7, "Weekday: a Saturday"
Same Weekday(d, vbMonday), 6, "Weekday with Monday first"
Ok IsNull(Year(Null)) And IsNull(Month(Null)) And IsNull(Day(Null)), "parts of Null"
Ok IsNull(Hour(Null)) And IsNull(Minute(Null)) And IsNull(Second(Null)) And IsNull(Weekday(Null)), "more of Null"
Same Year("2/3/2004"), 2004, "of a text"
Same Day(0), 30, "of a number"
Fails 13, "x = Year(""abc"")"
Fails 5, "x = Weekday(#1/1/2026#, 8)"
