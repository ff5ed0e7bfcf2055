Class Counter
    Private m_total
    Private Sub Class_Initialize
        m_total = 0
    End Sub
    Public Sub Add(amount)
        m_total = m_total + amount
    End Sub
    Public Property Get Total
        Total = m_total
    End Property
End Class

Function Main
    Dim c, i
    Set c = New Counter
    For i = 1 To 300000
        c.Add i And 7
    Next
    Main = c.Total
End Function
