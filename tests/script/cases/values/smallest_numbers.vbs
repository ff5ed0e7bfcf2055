' The smallest Integer and the smallest Long have no absolute value of their kind.
Fails 6, "x = Abs(CInt(-32768))"
Fails 6, "x = Abs(CLng(-2147483648))"
Gives "Abs(CInt(-32767))", "Integer", "32767"
Gives "Abs(-32768)", "Long", "32768"
Gives "Abs(-2147483647)", "Long", "2147483647"
