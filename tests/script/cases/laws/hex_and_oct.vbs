' Hex and Oct read back.
Dim a
For Each a In Array(0, 1, 255, 32767, 70000, 2147483647)
    Same CLng("&h" & Hex(a)), CLng(a), "Hex(" & a & ")"
    Same CLng("&o" & Oct(a)), CLng(a), "Oct(" & a & ")"
Next
