' Logic against its tables.
Dim a, b
For Each a In Array(True, False)
    For Each b In Array(True, False)
        Same a Imp b, (Not a) Or b, "Imp"
        Same a Eqv b, Not (a Xor b), "Eqv"
        Same Not (a And b), (Not a) Or (Not b), "And and Or"
    Next
Next
