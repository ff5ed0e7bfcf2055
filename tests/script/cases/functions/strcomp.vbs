' StrComp.
Gives "StrComp(""a"", ""b"")", "Integer", "-1"
Gives "StrComp(""b"", ""a"")", "Integer", "1"
Gives "StrComp(""a"", ""a"")", "Integer", "0"
Gives "StrComp(""a"", ""A"")", "Integer", "1"
Gives "StrComp(""a"", ""A"", 1)", "Integer", "0"
Gives "StrComp(Null, ""a"")", "Null", ""
Fails 5, "x = StrComp(""a"", ""b"", 5)"
