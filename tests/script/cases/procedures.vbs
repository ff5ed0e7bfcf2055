Dim a, b, x, got
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
Function Twice(n)
    Twice = n * 2
End Function
x = Twice(4)
Same x, 8, "a function's result"
Same Twice(Twice(3)), 12, "calls in calls"
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
Class Box
    Public Content
    Public Sub Fill
        Content = 1
        Bump Content
    End Sub
End Class
Dim bx : Set bx = New Box
bx.Fill
Same bx.Content, 2, "a field by reference inside its class"
Bump bx.Content
Same bx.Content, 2, "a property passed by reference is a copy"
Dim arr(3)
arr(1) = 5
Bump arr(1)
Same arr(1), 6, "an array element by reference"
Sub BumpAll(list, place)
    Bump list(place)
End Sub
BumpAll arr, 1
Same arr(1), 7, "an element of an array that was passed by reference"
Sub Shadow(e)
    arr(1) = 100
    Same e, 100, "the element is the same place as the global array's"
    e = 200
    Same arr(1), 200, "in both directions"
End Sub
Shadow arr(1)
Dim nest(1)
nest(0) = Array(1, 2)
Same nest(0)(1), 2, "an index after an index"
nest(0)(1) = 9
Same nest(0)(1), 9, "assigned in place"
' Statement forms
Sub Note1(v) : got = v : End Sub
Sub Note2(v, w) : got = v & "," & w : End Sub
Note2 (2)*8, 7
Same got, "16,7", "an expression that starts with a parenthesis"
Note1(10)-3
Same got, 7, "one argument that starts with a parenthesis"
Note1.5
Same got, 0.5, "a number right after the name"
Note1(4)
Same got, 4, "one argument in parentheses"
Same CInt (2) * 3, 6, "blank before the parenthesis of a function"
Call Note2(1, 2)
Same got, "1,2", "Call"
Sub None : got = "none" : End Sub
None
Same got, "none", "no parameters"
None()
Call None
Call None()
Same got, "none", "with empty parentheses"
Sub OneLine() x=1 End Sub
OneLine
Same x, 1, "a Sub on one line without separators"
Function Rec(n)
    If n = 0 Then Rec = 0 Else Rec = 1 + Rec(n - 1)
End Function
Same Rec(500), 500, "recursion"
Function Partial(n)
    Partial = 1
    Partial = Partial + n
    If n > 5 Then Exit Function
    Partial = Partial + 100
End Function
Same Partial(1), 102, "the function's name is its current result"
Same Partial(6), 7, "Exit Function keeps it"
Function Nothing1
End Function
Ok IsEmpty(Nothing1), "a function that assigns nothing gives Empty"
Function MakeDict
    Set MakeDict = CreateObject("Scripting.Dictionary")
    MakeDict.Add "a", 1
End Function
Same MakeDict.Count, CLng(1), "an object as result"
Same MakeDict()("a"), 1, "used at once"
Function List
    List = Array(Array(1, 2), Array(3, 4))
End Function
Same List()(1)(0), 3, "f()(1)(0)"
Same Split("a,b", ",")(1), "b", "Split(..)(1)"
' Two of one name: the last wins
Function Which : Which = 1 : End Function
Function Which : Which = 2 : End Function
Same Which, 2, "the last of two procedures counts"
' Constants
Same Late, 42, "a Const is visible before its line"
Const Late = 42
Fails 501, "Late = 1"
Fails 501, "Which = 3"
Fails 501, "vbCrLf = 3"
Fails 501, "Set Late = Nothing"
Sub ConstLocal
    Same Inner, 5, "a local Const before its line"
    Const Inner = 5
    On Error Resume Next
    Inner = 6
    Ok Err.Number = 501, "assigning a local Const"
End Sub
ConstLocal
Const Neg = -5, Txt = "t", Both = &h10
Same Neg, -5, "a negative constant"
Same Txt & Both, "t16", "several on a line"
Sub DimLater
    late1 = 3
    Same late1, 3, "a Dim after its use"
    Dim late1
End Sub
DimLater
' Scope
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
' Errors
Fails 450, "Bump"
Fails 450, "Bump 1, 2"
Fails 450, "Call Twice(1, 2)"
Fails 450, "x = Len(""a"", ""b"")"
Fails 450, "x = Len()"
Fails 13, "NoSuchProcedure"
Fails 13, "NoSuchProcedure 1"
Fails 13, "x = NoSuchFunction(1)"
Fails 500, "Option Explicit : x1 = NoSuchName"
Fails 500, "Option Explicit : noSuchVariable = 1"
Dim num : num = 5
Fails 13, "num"
Fails 13, "num 1"
Dim emp
Fails 13, "emp"
Sub Endless : Endless : End Sub
Fails 28, "Endless"
Function EndlessF(n) : EndlessF = EndlessF(n + 1) + 1 : End Function
Fails 28, "x = EndlessF(1)"
Fails 1044, "strcomp(""x"",""y"")"
' Names
Dim default, error, explicit, step, property
default = 1 : error = 2 : explicit = 3 : step = 4 : property = 5
Same default + error + explicit + step + property, 15, "words that are names too"
Dim [a name], [for]
[a name] = 1 : [for] = 2
Same [A NAME] + [For], 3, "names in brackets"
Class Words
    Public [End], [If], [Next]
End Class
Dim w : Set w = New Words
w.End = 1 : w.If = 2 : w.Next = 3
Same w.End + w.If + w.Next, 6, "any keyword is a name after a dot"
SAME TWICE(1), 2, "case does not matter"
Rem a comment
x = 1 ' a comment
x = 1 : Rem another
x = 1 + _
    2 _
    + 3
Same x, 6, "lines joined"
' Omitted arguments
Function Missing1(p, q)
    Missing1 = VarType(q)
End Function
Same Missing1(1, ), 10, "an argument left out is an error value"
' GetRef
Dim ref : Set ref = GetRef("twice")
Same ref(21), 42, "GetRef ignores case"
Fails 5, "Set x = GetRef(""noSuch"")"
Fails 13, "Set x = GetRef(5)"
Set ref = GetRef("Note1")
ref 17
Same got, 17, "a reference called as a statement"
