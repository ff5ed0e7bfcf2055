' A procedure may go on after its own errors, and may take that back.
Dim x
Sub OwnHandler
    On Error Resume Next
    x = 1 / 0
    x = "went on"
End Sub
OwnHandler
Same x, "went on", "a handler of its own"
Sub NoHandler
    On Error Resume Next
    On Error GoTo 0
    x = 1 / 0
End Sub
Fails 11, "NoHandler"
