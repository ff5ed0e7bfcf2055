' Arrays as fields of a class: fixed ones stay fixed, others grow.
Dim i
Dim a(3)
Fails 10, "ReDim a(5)"
Fails 10, "ReDim Preserve a(5)"
Class Holder
    Private fixed(2)
    Public list()
    Public Sub Grow
        ReDim fixed(5)
    End Sub
    Public Sub Resize(n)
        ReDim Preserve list(n)
    End Sub
    Public Sub Put(i, v)
        list(i) = v
    End Sub
    Public Property Get Item(i)
        Item = list(i)
    End Property
End Class
Dim h : Set h = New Holder
Fails 10, "h.Grow"
h.Resize 2
h.Put 1, "v"
Same h.Item(1), "v", "an array field"
Same h.list(1), "v", "a public array field with an index"
h.list(2) = "w"
Same h.list(2), "w", "assigned from outside"
