' With evaluates its object once.
Dim o
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
Dim withCount : withCount = 0
Function TheObject
    withCount = withCount + 1
    Set TheObject = o
End Function
With TheObject
    .X = 1
    .Y = 2
    .MoveBy .X, .Y
    Same .X, 2, "members inside With"
    With CreateObject("Scripting.Dictionary")
        .Add "k", 5
        Same .Item("k"), 5, "nested With"
        .Item("k") = 6
        Same .Item("k"), 6, "an indexed property inside With"
    End With
    Same .Y, 4, "after the inner one"
    Ok .X = 2, "an argument that starts with a dot"
End With
Same withCount, 1, "With evaluates its object once"
