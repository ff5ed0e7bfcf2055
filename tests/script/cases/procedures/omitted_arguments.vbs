' An argument left out is an error value.
Function Missing1(p, q)
    Missing1 = VarType(q)
End Function
Same Missing1(1, ), 10, "an argument left out is an error value"
