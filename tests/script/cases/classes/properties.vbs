' Property Get, Let and Set, with indices and without.
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
Class Props
    Private m_v, m_o, m_list(9)
    Public Property Get V : V = m_v : End Property
    Public Property Let V(n) : m_v = n + 1 : End Property
    Public Property Get O : Set O = m_o : End Property
    Public Property Set O(n) : Set m_o = n : End Property
    Public Property Get At(i) : At = m_list(i) : End Property
    Public Property Let At(i, n) : m_list(i) = n : End Property
    Public Property Get Two(i, j) : Two = m_list(i) & m_list(j) : End Property
    Public Property Get RO : RO = 1 : End Property
    Public Property Let WO(n) : m_v = n : End Property
    Public Property Let Taker(n) : m_v = TypeName(n) : End Property
    Private Sub Hidden : End Sub
    Private Secret
    Public Scalar
    Public Function F(n) : F = n : End Function
    Public Function UsesOwn
        V = 10
        UsesOwn = V
    End Function
    Public Function CallsOwn : CallsOwn = F(3) + Me.F(4) : Hidden : Me.Hidden : End Function
End Class
Set o = New Props
o.V = 5
Same o.V, 6, "Let and Get"
Set o.O = New Point
o.O.X = 3
Same o.O.X, 3, "Property Set"
o.At(3) = "t"
Same o.At(3), "t", "an indexed property"
o.At(4) = "u"
Same o.Two(3, 4), "tu", "two indices"
Same o.UsesOwn, 11, "own properties by bare name"
Same o.CallsOwn, 7, "own methods by bare name and Me"
o.Taker = CreateObject("Scripting.Dictionary")
Same o.V, "Dictionary", "Property Let receives the object itself"
