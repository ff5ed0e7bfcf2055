' For the formatters Null is a value of the wrong type.
Fails 13, "x = FormatNumber(Null)"
Fails 13, "x = FormatCurrency(Null)"
Fails 13, "x = FormatPercent(Null)"
Fails 13, "x = FormatDateTime(Null)"
Gives "FormatNumber(Empty)", "String", "0.00"
