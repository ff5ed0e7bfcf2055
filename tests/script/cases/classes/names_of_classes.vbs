' A dot needs With, New a class.
Dim p, x
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
Fails 505, "x = .p"
Fails 505, ".p = 1"
Fails 500, "Set x = New NoSuchClass"
Fails 506, "v = 1 : Set x = New v"
Fails 13, "x = Point"
