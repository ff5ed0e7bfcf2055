' A default property stands for its object in every value.
Dim o, x
Class WithDefault
    Private m_n
    Public Default Property Get Value : Value = m_n : End Property
    Public Property Let Value(n) : m_n = n : End Property
End Class
Set o = New WithDefault
o.Value = 7
Same o + 1, 8, "a default property in arithmetic"
x = o
Same x, 7, "in an assignment without Set"
Ok o = 7, "in a comparison"
Same "v" & o, "v7", "in a text"
Same CStr(o), "7", "in a conversion"
If o Then x = "true"
Same x, "true", "in a condition"
Same Abs(o), 7, "in a function"
