' Execute finds one match, or all of them when Global.
Dim k, r, m, x
Set r = New RegExp
r.Pattern = "(\w+)@(\w+)\.com"
Ok r.Test("me@example.com"), "Test"
Ok Not r.Test("nobody"), "Test that fails"
Set m = r.Execute("a@b.com c@d.com")
Same m.Count, CLng(1), "one match unless Global"
r.Global = True
Set m = r.Execute("a@b.com c@d.com")
Same m.Count, CLng(2), "Global"
Same m(1).Value, "c@d.com", "Value"
Same "" & m(1), "c@d.com", "the default of a match"
Same m.Item(0).FirstIndex, CLng(0), "FirstIndex"
Same m(1).FirstIndex, CLng(8), "of the second"
Same m(0).Length, CLng(7), "Length"
Same m(0).SubMatches(0) & m(0).SubMatches(1), "ab", "SubMatches"
Same m(0).SubMatches.Count, CLng(2), "their count"
x = ""
For Each k In m
    x = x & k.Value & ";"
Next
Same x, "a@b.com;c@d.com;", "For Each over matches"
