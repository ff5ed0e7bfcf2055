' Beside a date a text is read as a date, and must be one.
Dim d, s
d = #1/1/2000#
s = "1/1/2000"
Ok s = d, "the same day"
Ok "1/2/2000" > d, "a later one"
Ok d < "1/2/2000", "from the other side"
Ok "36526" = d, "a number counts as a date"
Fails 13, "x = (""abc"" = #1/1/2000#)"
Fails 13, "x = (#1/1/2000# < ""abc"")"
Fails 13, "x = ("""" = #1/1/2000#)"
Fails 13, "s = ""abc"" : d = Now : x = (s < d)"
