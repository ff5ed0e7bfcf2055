' Beside a number literal a text is a number.
Ok "1e2" = 100, "text against a number literal compares numbers"
Ok "&hff" = 255, "hexadecimal text against a number literal"
Ok 100 = "1e2", "either side"
Ok "5" < 10, "less, as numbers"
Fails 13, "x = (""abc"" = 5)"
Fails 13, "x = ("""" = 5)"
Fails 13, "x = (5 = ""abc"")"
