' Join.
Gives "Join(Array(1, ""b"", 2.5))", "String", "1 b 2.5"
Gives "Join(Array(1, 2), ""-"")", "String", "1-2"
Gives "Join(Array(1, 2), """")", "String", "12"
Gives "Join(Array())", "String", ""
Gives "Join(Array(""a"", Empty, ""c""), "","")", "String", "a,,c"
Fails 13, "x = Join(""abc"")"
