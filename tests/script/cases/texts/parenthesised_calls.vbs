' What stands in parentheses can be called and indexed.
Class Teller
    Public Told
    Public Sub M()
        total = total + 1
    End Sub
    Public Function Twice(n)
        Twice = n * 2
    End Function
End Class
Dim total, f, x, y
total = 0
Call (New Teller).M()
Same total, 1, "Call of a member of a new object"
x = (New Teller).Twice(4)
Same x, 8, "the same in an expression"
Function AddOne(n)
    AddOne = n + 1
End Function
Set f = GetRef("AddOne")
x = (f)(4)
Same x, 5, "a reference in parentheses"
Call (f)(5)
x = Array(7, Array(8, 9))
y = (x)(0)
Same y, 7, "an array in parentheses"
y = ((x))(0)
Same y, 7, "in two pairs"
y = ((x)(1))(1)
Same y, 9, "index after index"
Fails 13, "z = (5)(0)"
Fails 1025, "z = (1).5"
