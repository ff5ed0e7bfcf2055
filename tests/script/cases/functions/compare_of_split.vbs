' Split compares by code or by letters.
Gives "UBound(Split(""aXbxc"", ""x"", -1, 0))", "Long", "1"
Gives "UBound(Split(""aXbxc"", ""x"", -1, 1))", "Long", "2"
Fails 5, "x = Split(""aXbxc"", ""x"", -1, 2)"
Fails 5, "x = Split(""aXbxc"", ""x"", -1, 3)"
Fails 5, "x = Split(""aXbxc"", ""x"", -1, -1)"
