' Fields and methods of an object, and what it says of itself.
Dim o, p
Class Point
    Public X, Y
    Public Function Length
        Length = Sqr(X * X + Y * Y)
    End Function
    Public Sub MoveBy(dx, dy)
        X = X + dx
        Me.Y = Me.Y + dy
    End Sub
End Class
Set o = New Point
o.X = 3 : o.Y = 4
Same o.Length, 5.0, "a method"
Same TypeName(o.Length), "Double", "its type"
o.MoveBy 1, 1
Same o.X & "," & o.Y, "4,5", "fields changed by a method"
Same TypeName(o), "Point", "TypeName is the class"
Ok IsObject(o), "IsObject"
Same VarType(o), 9, "VarType"
Set p = o
p.X = 100
Same o.X, 100, "Set shares the object"
