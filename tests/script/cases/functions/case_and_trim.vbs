' UCase, LCase and Trim.
Gives "UCase(""aBc1"")", "String", "ABC1"
Gives "LCase(""aBc1"")", "String", "abc1"
Gives "UCase(Null)", "Null", ""
Gives "LCase(Null)", "Null", ""
Gives "UCase(""" & ChrW(228) & """)", "String", ChrW(196)
Gives "Trim(""  a b  "")", "String", "a b"
Gives "LTrim(""  a "")", "String", "a "
Gives "RTrim("" a  "")", "String", " a"
Gives "Trim(Null)", "Null", ""
Gives "Trim(vbTab & ""a"")", "String", vbTab & "a"
Gives "Trim(""   "")", "String", ""
