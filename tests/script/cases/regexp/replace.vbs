' Replace fills in groups, what was matched and what lies around it.
Dim r
Set r = New RegExp
r.Pattern = "(\w+)@(\w+)\.com"
r.Global = True
Same r.Replace("a@b.com c@d.com", "$2 at $1"), "b at a d at c", "Replace with groups"
r.Pattern = "b"
Same r.Replace("abcb", "[$&]"), "a[b]c[b]", "$&"
Same r.Replace("abcb", "$$"), "a$c$", "$$"
Same r.Replace("xbx", "$`"), "xxx", "$`"
Same r.Replace("abc", "$'"), "acc", "$'"
r.Global = False
Same r.Replace("abcb", "-"), "a-cb", "only the first"
