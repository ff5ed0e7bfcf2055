' End Class needs no separator before it once the class has a member.
Class OneField
    Public X End Class
Class OneMethod
    Public Function Give
        Give = 5
    End Function End Class
Class OneConst
    Const c = 1 End Class
Dim o
Set o = New OneField
o.X = 3
Same o.X, 3, "after a field"
Set o = New OneMethod
Same o.Give, 5, "after a method"
Fails 1024, "Class None1 End Class"
