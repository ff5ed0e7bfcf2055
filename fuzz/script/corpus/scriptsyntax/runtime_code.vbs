Dim x, y, o
Same Eval("1 + 2"), 3, "Eval"
Same Eval(5), 5, "Eval of something that is no text returns it"
Ok IsNull(Eval(Null)), "even Null"
x = 4
Same Eval("x * 2"), 8, "Eval sees variables"
Ok Eval("x = 4"), "an equals sign compares"
Fails 13, "Execute 5"
Fails 13, "ExecuteGlobal Empty"
Fails 1002, "y = Eval(""1 + "")"
Fails 1002, "Execute ""x = """
Execute "x = 9"
Same x, 9, "Execute"
Execute "Dim made : made = 3"
Same made, 3, "a Dim in Execute"
Sub Inner
    Dim loc
    loc = 1
    Execute "loc = loc + 1"
    Same loc, 2, "Execute changes a local variable"
    Same Eval("loc * 10"), 20, "Eval reads it"
    Execute "Dim fresh : fresh = 7"
    Same Eval("fresh"), 7, "a Dim lands in the procedure"
    Execute "fresh = fresh + 1"
    Same Eval("fresh"), 8, "and stays there"
    Same fresh, 8, "the procedure itself sees it"
    ExecuteGlobal "Dim globalFresh : globalFresh = 11"
    Execute "For i1 = 1 To 3 : loc = loc + i1 : Next"
    Same loc, 8, "a loop in Execute"
    Execute "Const cc = 5 : loc = cc"
    Same loc, 5, "a Const in Execute"
End Sub
Inner
Ok IsEmpty(fresh), "the caller's scope, not the global one"
Same globalFresh, 11, "ExecuteGlobal lands in the global scope"
Sub Param(p, ByVal q)
    Execute "p = p & ""!"" : q = q & ""?"""
    Same q, "b?", "a by-value parameter"
End Sub
x = "a" : y = "b"
Param x, y
Same x & y, "a!b", "a by-reference parameter"
Class K
    Private m
    Public Function Test
        m = 1
        Execute "m = m + 4"
        Test = Eval("m + Own(2)")
    End Function
    Public Function Own(n) : Own = n * 100 : End Function
End Class
Set o = New K : Same o.Test, 205, "inside a class the object's members are seen"
ExecuteGlobal "Function Added(n) : Added = n + 1 : End Function"
Same Added(1), 2, "a function added at run time"
Execute "Sub AddedSub : x = ""sub"" : End Sub"
AddedSub
Same x, "sub", "a procedure added by Execute"
ExecuteGlobal "Class Later : Public V : End Class"
Set o = New Later
o.V = 1
Same o.V, 1, "a class added at run time"
Execute "Option Explicit" & vbLf & "Dim decl : decl = 1"
notDeclared = 1
Same notDeclared, 1, "Option Explicit holds per text"
Fails 500, "Option Explicit : undeclared1 = 1"
Fails 500, "Option Explicit : y = undeclared2"
Fails 500, "Option Explicit : undeclared3.x = 1"
Fails 500, "Option Explicit : For undeclared4 = 1 To 2 : Next"
x = 0
Dim i
For i = 1 To 50
    Execute "x = x + 1"
Next
Same x, 50, "the same text many times"
Sub ResumeInText
    On Error Resume Next
    Execute "x = 1 / 0 : x = 99"
    Ok Err.Number = 11, "an error leaves the text"
    Same x, 50, "and the rest of it is not run"
    Err.Clear
    Execute "On Error Resume Next : x = 1 / 0 : x = 99"
    Same x, 99, "unless it goes on itself"
End Sub
ResumeInText
Same Eval("Eval(""1+1"") + 1"), 3, "Eval in Eval"
Function Rec(n)
    If n = 0 Then Rec = 0 Else Rec = Eval("Rec(n - 1) + 1")
End Function
Same Rec(100), 100, "recursion through Eval"
Fails 28, "Function Rec2(n) : Rec2 = Eval(""Rec2(n + 1)"") : End Function : Rec2 1"
Dim f : Set f = GetRef("Rec")
Same f(3), 3, "GetRef"
Same Eval(" 7 "), 7, "blanks around"
Fails 1025, "y = Eval(""1 2"")"
Fails 450, "y = Eval()"
Fails 450, "y = Eval(1, 2)"
