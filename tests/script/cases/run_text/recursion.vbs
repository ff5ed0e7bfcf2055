' Eval in Eval, to any sensible depth.
Same Eval("Eval(""1+1"") + 1"), 3, "Eval in Eval"
Function Rec(n)
    If n = 0 Then Rec = 0 Else Rec = Eval("Rec(n - 1) + 1")
End Function
Same Rec(100), 100, "recursion through Eval"
Fails 28, "Function Rec2(n) : Rec2 = Eval(""Rec2(n + 1)"") : End Function : Rec2 1"
Dim f : Set f = GetRef("Rec")
Same f(3), 3, "GetRef"
