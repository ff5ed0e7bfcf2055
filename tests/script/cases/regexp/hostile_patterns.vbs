' A pattern that would search for ever comes to an end, and says so: whether it matches is not known.
Dim r, x
Set r = New RegExp
r.Pattern = "(a+)+$"
On Error Resume Next
r.Test String(40, "a") & "b"
Ok Err.Number = 28, "a hostile pattern is error 28"
Ok Err.Description = "The regular expression takes too many steps on this text", "the error says what is wrong"
Err.Clear
r.Execute String(40, "a") & "b"
Ok Err.Number = 28, "Execute says so too"
Err.Clear
x = r.Replace(String(40, "a") & "b", "x")
Ok Err.Number = 28, "Replace says so too"
Err.Clear
Ok r.Test(String(40, "a")) = True, "the same pattern finds what is there"
Ok Err.Number = 0, "and is no error then"
