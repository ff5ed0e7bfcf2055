' An error without a handler goes to the caller, which goes on after the call.
Dim x, r
Sub Thrower
    x = "before"
    Err.Raise 1000, "me", "my text"
    x = "after"
End Sub
On Error Resume Next
Thrower
r = "next"
Ok Err.Number = 1000, "an error of a procedure goes to the caller"
Same Err.Source, "me", "with its source"
Same Err.Description, "my text", "and its text"
Same x, "before", "the procedure ended"
Same r, "next", "the caller went on after the call"
Err.Clear
Sub Deep3 : Err.Raise 5 : End Sub
Sub Deep2 : Deep3 : x = "no" : End Sub
Sub Deep1
    On Error Resume Next
    Deep2
    x = "caught " & Err.Number
End Sub
Deep1
Same x, "caught 5", "through several levels"
Err.Clear
Sub WithLoop
    Dim i
    For i = 1 To 2
        Err.Raise 90 + i
    Next
End Sub
WithLoop
Ok Err.Number = 91, "the first error leaves the procedure"
