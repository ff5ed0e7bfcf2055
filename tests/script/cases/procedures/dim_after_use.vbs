' A local variable exists before its Dim.
Sub DimLater
    late1 = 3
    Same late1, 3, "a Dim after its use"
    Dim late1
End Sub
DimLater
