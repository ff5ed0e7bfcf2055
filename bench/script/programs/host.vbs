' One read and one write of a host object's property in each pass.
Function Main
    Dim i
    Gauge.Level = 0
    For i = 1 To 1000000
        Gauge.Level = Gauge.Level + 1
    Next
    Main = Gauge.Level
End Function
