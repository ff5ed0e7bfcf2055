' Inside a class the members of the object are seen.
Dim o
Class K
    Private m
    Public Function Test
        m = 1
        Execute "m = m + 4"
        Test = Eval("m + Own(2)")
    End Function
    Public Function Own(n) : Own = n * 100 : End Function
End Class
Set o = New K : Same o.Test, 205, "inside a class the object's members are seen"
