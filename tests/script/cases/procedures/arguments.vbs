' Arguments are by reference; an expression or a parenthesised argument is a copy.
Dim a
Sub Bump(n)
    n = n + 1
End Sub
Sub BumpValue(ByVal n)
    n = n + 1
End Sub
a = 1
Bump a
Same a, 2, "arguments are by reference"
Bump (a)
Same a, 2, "a parenthesised argument is a copy"
Call Bump((a))
Same a, 2, "also with Call"
Call Bump(a)
Same a, 3, "Call passes by reference"
BumpValue a
Same a, 3, "ByVal"
Bump a + 0
Same a, 3, "an expression is a copy"
Bump 5
Sub Nested(n)
    Bump n
    Bump n
End Sub
a = 10
Nested a
Same a, 12, "a reference is passed on"
Sub Locals()
    Dim v
    v = 1
    Nested v
    Same v, 3, "a local variable by reference"
End Sub
Locals
