' Which variable a name means inside a procedure.
Dim x
x = "global"
Sub LocalX
    Dim x
    x = "local"
    Same x, "local", "a local variable hides the global one"
End Sub
LocalX
Same x, "global", "and leaves it alone"
Sub SetsGlobal
    x = "changed"
End Sub
SetsGlobal
Same x, "changed", "an undeclared name means the global variable"
Sub MakesLocal
    onlyHere = 1
End Sub
MakesLocal
Ok IsEmpty(onlyHere), "a name assigned in a procedure alone is local"
