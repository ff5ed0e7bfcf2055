' A private or missing member is 438, a wrong number of arguments 450.
Dim o, x
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
Fails 438, "o.RO = 2"
Fails 438, "x = o.WO"
Fails 438, "Set o.V = o"
Fails 438, "o.Hidden"
Fails 438, "x = o.Secret"
Fails 438, "o.Secret = 1"
Fails 438, "x = o.Missing"
Fails 438, "o.Missing = 1"
Fails 438, "o.Missing 1"
Fails 438, "x = o.Scalar(1)"
o.Scalar = 6
Fails 5, "x = o.Scalar()"
o.Scalar() = 7
Same o.Scalar, 7, "a field assigned with empty parentheses"
Fails 450, "x = o.F"
Fails 450, "o.F 1, 2"
Fails 450, "x = o.At"
