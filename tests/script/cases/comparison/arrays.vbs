' An array compares with nothing, Null included.
Fails 13, "x = (Array(1) = 1)"
Fails 13, "x = (Array(1) = Null)"
Fails 13, "x = (1 < Array(1))"
Fails 13, "x = (Array(1) = Array(1))"
