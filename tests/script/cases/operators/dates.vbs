' Dates plus and minus days; dates before day 0.
Gives "#1/31/2026# + 1", "Date", "2/1/2026"
Gives "#2/1/2026# - #1/31/2026#", "Double", "1"
Gives "CDate(0)", "Date", "12:00:00 AM"
Gives "CDate(-1.25)", "Date", "12/29/1899 6:00:00 AM"
