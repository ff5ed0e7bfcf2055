' A field is passed by reference inside its class, outside it is a copy.
Sub Bump(n)
    n = n + 1
End Sub
Class Box
    Public Content
    Public Sub Fill
        Content = 1
        Bump Content
    End Sub
End Class
Dim bx : Set bx = New Box
bx.Fill
Same bx.Content, 2, "a field by reference inside its class"
Bump bx.Content
Same bx.Content, 2, "a property passed by reference is a copy"
