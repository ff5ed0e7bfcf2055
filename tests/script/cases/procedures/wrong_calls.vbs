' A wrong number of arguments, names that are no procedures.
Dim a, b, x
Sub Bump(n)
    n = n + 1
End Sub
Function Twice(n)
    Twice = n * 2
End Function
Fails 450, "Bump"
Fails 450, "Bump 1, 2"
Fails 450, "Call Twice(1, 2)"
Fails 450, "x = Len(""a"", ""b"")"
Fails 450, "x = Len()"
Fails 13, "NoSuchProcedure"
Fails 13, "NoSuchProcedure 1"
Fails 13, "x = NoSuchFunction(1)"
Fails 500, "Option Explicit : x1 = NoSuchName"
Fails 500, "Option Explicit : noSuchVariable = 1"
Dim num : num = 5
Fails 13, "num"
Fails 13, "num 1"
Dim emp
Fails 13, "emp"
