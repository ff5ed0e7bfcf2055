Option Explicit
Dim i, s, a(3)
For i = 1 To 10 : s = s & i : Next
Ok s = "12345678910", "for and concat"
Function fib(n)
  If n < 2 Then fib = n Else fib = fib(n-1) + fib(n-2)
End Function
Same fib(15), 610, "fib"
a(1) = 5
Ok a(1) = 5, "array"
Class C
  Public x
  Private m
  Private Sub Class_Initialize : m = 7 : End Sub
  Public Property Get P : P = m : End Property
  Public Property Let P(v) : m = v * 2 : End Property
  Public Default Function D(k) : D = k + m : End Function
End Class
Dim o : Set o = New C
Ok o.P = 7, "get"
o.P = 4
Ok o.P = 8, "let"
Ok o(2) = 10, "default"
o.x = "hi"
Ok o.x = "hi", "field"
Sub Swap(a, b)
  Dim t : t = a : a = b : b = t
End Sub
Dim p, q : p = 1 : q = 2
Swap p, q
Ok p = 2 And q = 1, "byref"
a(0) = 1 : a(2) = 9
Swap a(0), a(2)
Ok a(0) = 9 And a(2) = 1, "byref elements"
Fails 11, "x = 1 / 0"
Gives "2^3^2", "Double", "64"
