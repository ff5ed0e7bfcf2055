' The text of a number reads back.
Dim a
For Each a In Array(0, 1, -1, 0.5, -0.25, 123456789, 1E15, 1E-7, 32768, 2147483648, 0.1, 1 / 3)
    Ok Abs(CDbl(CStr(a)) - a) <= Abs(a) * 1E-14, "CDbl(CStr(" & a & "))"
    Ok IsNumeric(CStr(a)), a & " reads as a number"
Next
