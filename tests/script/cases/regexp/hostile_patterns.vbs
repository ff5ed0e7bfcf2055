' A pattern that would search for ever comes to an end.
Dim r, x
Set r = New RegExp
r.Pattern = "(a+)+$"
x = r.Test(String(40, "a") & "b")
Ok True, "a hostile pattern comes to an end"
