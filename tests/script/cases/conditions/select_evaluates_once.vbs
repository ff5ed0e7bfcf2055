' The selected value is evaluated once, cases until one fits.
Dim evaluated : evaluated = 0
Function Once(v)
    evaluated = evaluated + 1
    Once = v
End Function
Select Case Once(2)
    Case 1
    Case 2
    Case 3
End Select
Same evaluated, 1, "the selected value is evaluated once"
Select Case Once(1)
    Case Once(1), Once(2)
    Case Once(3)
End Select
Same evaluated, 3, "cases are tried in order until one fits"
Fails 13, "Select Case 1 : Case Array(1) : End Select"
