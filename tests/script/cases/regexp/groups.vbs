' An empty pattern fits; a group that took no part is Empty.
Dim r, m
Set r = New RegExp
r.Pattern = ""
Ok r.Test("anything"), "an empty pattern fits"
r.Pattern = "(a)|(b)"
Set m = r.Execute("b")
Ok IsEmpty(m(0).SubMatches(0)), "a group that took no part is Empty"
Same m(0).SubMatches(1), "b", "the other one"
