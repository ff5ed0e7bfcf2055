' Methods call themselves, see constants and change their arguments.
Dim o, x
Class Recursive
    Public Function Fact(n)
        If n < 2 Then Fact = 1 Else Fact = n * Fact(n - 1)
    End Function
End Class
Set o = New Recursive : Same o.Fact(5), 120, "a recursive method of a new object"
Class WithConst
    Public Function Get5 : Get5 = Five : End Function
End Class
Const Five = 5
Set o = New WithConst : Same o.Get5, 5, "globals inside a class"
Class ByRefMethod
    Public Sub Inc(n) : n = n + 1 : End Sub
    Public Property Let P(ByRef i, v) : i = i + v : End Property
End Class
Set o = New ByRefMethod
x = 1
o.Inc x
Same x, 2, "a method changes its argument"
