' Filter.
Gives "UBound(Filter(Array(""ab"", ""bc"", ""cd""), ""b""))", "Long", "1"
Gives "Filter(Array(""ab"", ""bc"", ""cd""), ""b"", False)(0)", "String", "cd"
Gives "UBound(Filter(Array(""aB""), ""b"", True, 1))", "Long", "0"
Gives "UBound(Filter(Array(""ab""), ""z""))", "Long", "-1"
Fails 13, "x = Filter(""a"", ""b"")"
