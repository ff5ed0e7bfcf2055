' Endless recursion is error 28.
Dim x
Sub Endless : Endless : End Sub
Fails 28, "Endless"
Function EndlessF(n) : EndlessF = EndlessF(n + 1) + 1 : End Function
Fails 28, "x = EndlessF(1)"
