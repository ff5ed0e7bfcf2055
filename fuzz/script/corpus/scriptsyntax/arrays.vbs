Dim a(3), d(), m(2, 3), s, x, i
Same UBound(a), CLng(3), "upper bound"
Same LBound(a), CLng(0), "lower bound"
Same UBound(m, 2), CLng(3), "of the second dimension"
a(0) = 1 : a(3) = "x"
Same a(0) & a(3), "1x", "elements"
Ok IsEmpty(a(1)), "elements start Empty"
m(2, 3) = 7
Same m(2, 3), 7, "two dimensions"
Same a(0.5), 1, "an index is rounded half to even"
Same a("3"), "x", "a text that is a number is an index"
Fails 9, "x = a(4)"
Fails 9, "a(4) = 1"
Fails 9, "x = a(-1)"
Fails 9, "x = a(1, 1)"
Fails 9, "x = m(1)"
Fails 9, "x = d(0)"
Fails 9, "d(0) = 1"
Fails 9, "x = UBound(d)"
Fails 9, "x = UBound(a, 2)"
Fails 9, "x = UBound(a, 0)"
Fails 13, "x = UBound(5)"
Fails 13, "x = s(1)"
Fails 13, "s(1) = 1"
Fails 9, "x = a()"
Fails 13, "x = s()"
Fails 10, "ReDim a(5)"
Fails 10, "ReDim Preserve a(5)"
Class Holder
    Private fixed(2)
    Public list()
    Public Sub Grow
        ReDim fixed(5)
    End Sub
    Public Sub Resize(n)
        ReDim Preserve list(n)
    End Sub
    Public Sub Put(i, v)
        list(i) = v
    End Sub
    Public Property Get Item(i)
        Item = list(i)
    End Property
End Class
Dim h : Set h = New Holder
Fails 10, "h.Grow"
h.Resize 2
h.Put 1, "v"
Same h.Item(1), "v", "an array field"
Same h.list(1), "v", "a public array field with an index"
h.list(2) = "w"
Same h.list(2), "w", "assigned from outside"
ReDim d(2)
d(0) = "p" : d(2) = "q"
ReDim Preserve d(4)
Same d(0) & d(2), "pq", "Preserve keeps elements"
Same UBound(d), CLng(4), "and grows"
ReDim Preserve d(1)
Same UBound(d), CLng(1), "and shrinks"
ReDim d(1)
Ok IsEmpty(d(0)), "without Preserve elements go"
ReDim d(1, 1)
d(1, 0) = 5
ReDim Preserve d(1, 4)
Same d(1, 0), 5, "the last dimension grows"
Fails 9, "ReDim Preserve d(2, 4)"
Fails 9, "ReDim Preserve d(3)"
ReDim d(-1)
Same UBound(d), CLng(-1), "ReDim x(-1) has no elements"
Fails 9, "ReDim d(-2)"
Sub Undeclared
    ReDim fresh(2)
    fresh(1) = 3
    Same fresh(1), 3, "ReDim declares"
End Sub
Undeclared
ExecuteGlobal "Option Explicit" & vbCrLf & "ReDim freshGlobal(2)" & vbCrLf & "freshGlobal(2) = 8"
Same freshGlobal(2), 8, "even under Option Explicit"
Erase a
Ok IsEmpty(a(0)), "Erase clears a fixed array"
Same UBound(a), CLng(3), "and keeps its bounds"
ReDim d(3)
Erase d
Fails 9, "x = UBound(d)"
Fails 13, "Erase s"
s = 5
Fails 13, "Erase s"
' Copies
Dim b, c
b = Array(1, 2, 3)
c = b
c(0) = 99
Same b(0), 1, "assigning copies"
b(1) = 50
Same c(1), 2, "both ways"
Sub ChangeIt(list) : list(0) = "changed" : End Sub
Sub ChangeCopy(ByVal list) : list(0) = "copy" : End Sub
ChangeIt b
Same b(0), "changed", "an array by reference"
ChangeCopy b
Same b(0), "changed", "an array by value"
c = Array(b, b)
b(0) = "again"
Same c(0)(0), "changed", "an array in an array is a copy"
Dim deep(1)
deep(0) = Array(Array(1, 2), 3)
deep(0)(0)(1) = "x"
Same deep(0)(0)(1), "x", "three levels down"
deep(1) = deep(0)
deep(0)(0)(1) = "y"
Same deep(1)(0)(1), "x", "a nested copy keeps its own"
Same TypeName(b), "Variant()", "TypeName of an array"
Same VarType(b), 8204, "VarType of an array"
Ok IsArray(b), "IsArray"
Ok Not IsArray(s), "IsArray of a number"
Dim big(1, 1, 1, 1)
big(1, 0, 1, 0) = 4
Same big(1, 0, 1, 0), 4, "four dimensions"
x = Array()
Same UBound(x), CLng(-1), "Array without elements"
x = Array(1, "two", Null, Empty)
Same UBound(x), CLng(3), "Array"
Ok IsNull(x(2)), "holds Null"
Fails 13, "s = 1 : s(0) = 2"
' The array changes while an element is passed around
Dim g()
ReDim g(2)
g(2) = 1
Sub Shrink(e)
    ReDim g(0)
    On Error Resume Next
    e = 5
    Ok Err.Number = 9, "an element that is gone"
End Sub
Shrink g(2)
Sub Copier(e)
    Dim keep
    keep = g
    e = "new"
    Ok IsEmpty(keep(1)), "a copy taken before does not see the change"
    Same g(1), "new", "the array does"
End Sub
ReDim g(2)
Copier g(1)
Fails 13, "Dim a()"
ExecuteGlobal "Dim s"
Same s, 1, "a scalar may be declared again"
Fails 1041, "Dim q1 : Const q1 = 1"
Fails 1041, "Const q1 = 1 : Dim q1"
Fails 1026, "n = 3 : Dim z(n)"
Fails 7, "ReDim d(100000000)"
Fails 7, "ReDim d(100000, 100000)"
