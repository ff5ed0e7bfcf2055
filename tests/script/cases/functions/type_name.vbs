' TypeName and VarType of every kind.
Dim kinds, i
kinds = Array(Empty, "Empty", 0, Null, "Null", 1, 5, "Integer", 2, 70000, "Long", 3, CSng(1), "Single", 4, 1.5, "Double", 5, CCur(1), "Currency", 6, #1/1/2026#, "Date", 7, "s", "String", 8, True, "Boolean", 11, CByte(1), "Byte", 17, Nothing, "Nothing", 9)
For i = 0 To UBound(kinds) Step 3
    Same TypeName(kinds(i)), kinds(i + 1), "TypeName"
    Same VarType(kinds(i)), kinds(i + 2), "VarType of " & kinds(i + 1)
Next
Same vbEmpty & vbNull & vbInteger & vbLong & vbSingle & vbDouble & vbCurrency & vbDate & vbString & vbObject & vbError & vbBoolean & vbVariant, "0123456789101112", "type constants"
Same vbArray + vbVariant, 8204, "vbArray"
Same vbByte, 17, "vbByte"
Same TypeName(Nothing), "Nothing", "TypeName of Nothing"
