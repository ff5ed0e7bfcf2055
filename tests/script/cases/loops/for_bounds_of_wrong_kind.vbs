' Bounds and collections of a wrong kind.
Fails 451, "For Each x In 5 : Next"
Fails 451, "For Each x In Empty : Next"
Fails 451, "For Each x In ""abc"" : Next"
Fails 13, "For i = ""a"" To 3 : Next"
Fails 94, "For i = Null To 3 : Next"
Fails 91, "For Each x In Nothing : Next"
