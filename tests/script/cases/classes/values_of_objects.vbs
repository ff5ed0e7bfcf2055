' An object without default has no value; members need an object.
Dim o, x
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
Fails 438, "x = o"
Fails 438, "x = o + 1"
Fails 438, "o"
x = 5
Fails 91, "x = Nothing"
Same x, 5, "x = Nothing keeps x"
Fails 424, "Set x = 5"
Fails 424, "x = 5 : x.y = 1"
Fails 424, "x = Empty : z = x.y"
Fails 424, "x = ""t"" : x.Foo"
Fails 91, "Set x = Nothing : x.Foo"
Fails 91, "Set x = Nothing : x.Foo = 1"
