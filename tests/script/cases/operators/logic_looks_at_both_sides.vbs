' And and Or evaluate both sides.
Dim calls : calls = 0
Function Count(result)
    calls = calls + 1
    Count = result
End Function
x = Count(False) And Count(True)
x = Count(True) Or Count(True)
Same calls, 4, "both sides of And and Or are evaluated"
