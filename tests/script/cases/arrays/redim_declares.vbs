' ReDim of an undeclared name declares it, even under Option Explicit.
Sub Undeclared
    ReDim fresh(2)
    fresh(1) = 3
    Same fresh(1), 3, "ReDim declares"
End Sub
Undeclared
ExecuteGlobal "Option Explicit" & vbCrLf & "ReDim freshGlobal(2)" & vbCrLf & "freshGlobal(2) = 8"
Same freshGlobal(2), 8, "even under Option Explicit"
