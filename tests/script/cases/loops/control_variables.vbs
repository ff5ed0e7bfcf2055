' A control variable may be undeclared, local or a reference.
Dim n
Dim q(3)
For q_i = 0 To 3 : q(q_i) = q_i * q_i : Next
Same q(3), 9, "an undeclared control variable"
Function Sum(n)
    Dim k
    For k = 1 To n
        Sum = Sum + k
    Next
End Function
Same Sum(100), 5050, "a loop in a function"
Sub CountRef(ByRef c)
    For c = 1 To 3 : Next
End Sub
CountRef n
Same n, 4, "a control variable passed by reference"
