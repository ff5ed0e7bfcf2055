' IgnoreCase and MultiLine.
Dim r
Set r = New RegExp
r.Pattern = "B"
Ok Not r.Test("abc"), "case matters"
r.IgnoreCase = True
Ok r.Test("abc"), "IgnoreCase"
r.Pattern = "^b$"
Ok Not r.Test("a" & vbLf & "b" & vbLf & "c"), "one line"
r.MultiLine = True
Ok r.Test("a" & vbLf & "b" & vbLf & "c"), "MultiLine"
Same r.Pattern, "^b$", "Pattern"
Ok r.IgnoreCase And r.MultiLine And Not r.Global, "the flags can be read"
