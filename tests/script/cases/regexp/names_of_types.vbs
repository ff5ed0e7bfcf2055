' Regular expressions tell the names of their types.
Dim r, m
Set r = New RegExp
r.Pattern = "(a)"
Set m = r.Execute("a")
Same TypeName(r), "IRegExp2", "the expression"
Same TypeName(m), "IMatchCollection2", "its matches"
Same TypeName(m(0)), "IMatch2", "one of them"
Same TypeName(m(0).SubMatches), "ISubMatches", "what its groups matched"
