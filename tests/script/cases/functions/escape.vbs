' Escape and Unescape.
Gives "Escape(""a b+c" & ChrW(233) & ChrW(8364) & """)", "String", "a%20b+c%E9%u20AC"
Gives "Unescape(""a%20b%E9%u20AC%zz%"")", "String", "a b" & ChrW(233) & ChrW(8364) & "%zz%"
