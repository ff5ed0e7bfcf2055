' Objects refer to objects; members of members are reached and assigned.
Dim x
Class Node
    Public Value, Link
    Private Sub Class_Initialize : Set Link = Nothing : End Sub
End Class
Dim head, i, n
Set head = Nothing
For i = 1 To 5
    Set n = New Node
    n.Value = i
    Set n.Link = head
    Set head = n
Next
x = ""
Set n = head
Do Until n Is Nothing
    x = x & n.Value
    Set n = n.Link
Loop
Same x, "54321", "a linked list"
Same head.Link.Link.Value, 3, "members of members"
head.Link.Value = "m"
Same head.Link.Value, "m", "assigned through a member"
