' An array beyond memory is an error, not a wait.
Dim d()
Fails 7, "ReDim d(100000000)"
Fails 7, "ReDim d(100000, 100000)"
