' What is wrong with a pattern.
Dim r, m, x
Set r = New RegExp
r.Pattern = "b"
Set m = r.Execute("b")
r.Pattern = "("
Fails 5020, "x = r.Test(""a"")"
r.Pattern = "["
Fails 5019, "x = r.Test(""a"")"
r.Pattern = "*a"
Fails 5018, "x = r.Test(""a"")"
r.Pattern = "[z-a]"
Fails 5021, "x = r.Test(""a"")"
r.Pattern = "\"
Fails 5017, "x = r.Test(""a"")"
Fails 5, "x = m(5)"
