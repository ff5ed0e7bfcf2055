' Words that are names too, names in brackets; case does not matter.
Function Twice(n)
    Twice = n * 2
End Function
Dim default, error, explicit, step, property
default = 1 : error = 2 : explicit = 3 : step = 4 : property = 5
Same default + error + explicit + step + property, 15, "words that are names too"
Dim [a name], [for]
[a name] = 1 : [for] = 2
Same [A NAME] + [For], 3, "names in brackets"
Class Words
    Public [End], [If], [Next]
End Class
Dim w : Set w = New Words
w.End = 1 : w.If = 2 : w.Next = 3
Same w.End + w.If + w.Next, 6, "any keyword is a name after a dot"
SAME TWICE(1), 2, "case does not matter"
