' A function's result is an argument like any other.
Dim x
Function Twice(n)
    Twice = n * 2
End Function
x = Twice(4)
Same x, 8, "a function's result"
Same Twice(Twice(3)), 12, "calls in calls"
