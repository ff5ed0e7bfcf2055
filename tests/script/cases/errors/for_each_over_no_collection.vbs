' For Each over what is no collection is 451. Under Resume Next the body runs once and 451 stands.
Fails 451, "For Each x In 5 : Next"
Fails 451, "For Each x In ""abc"" : Next"
Fails 451, "For Each x In Empty : Next"
Fails 451, "For Each x In Err : Next"
Fails 91, "For Each x In Nothing : Next"
On Error Resume Next
Dim n, x
n = 0
x = "kept"
For Each x In 5
    n = n + 1
Next
Same n, 1, "the body runs once"
Same x, "kept", "the variable is untouched"
Same Err.Number, CLng(451), "Next adds no error of its own"
