' Now, Date, Time and Timer.
Same TypeName(Now), "Date", "Now"
Same TypeName(Date), "Date", "Date"
Same TypeName(Time), "Date", "Time"
Same TypeName(Timer), "Single", "Timer"
Ok Timer >= 0 And Timer < 86401, "Timer is in the day"
Ok Now >= Date, "Now is not before today"
Ok Int(Now) = Date Or Int(Now) = Date + 1, "Date is Now without its time"
