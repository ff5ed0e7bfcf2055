' Eval, Execute and ExecuteGlobal work in a text that itself runs inside a procedure, in that procedure's scope.
Dim shown, globalMade
Sub Inside(p)
    Dim own
    own = 10
    Execute "shown = Eval(""own + p"")"
    Same shown, 15, "Eval in Execute sees the procedure's names"
    Execute "Execute ""own = own + 1"""
    Same own, 11, "Execute in Execute changes them"
    Execute "Execute ""Execute """"own = own * 2"""""""
    Same own, 22, "three deep"
    Same Eval("Eval(""own"") + 1"), 23, "Eval in Eval"
    Execute "ExecuteGlobal ""globalMade = 3"""
    Same globalMade, 3, "ExecuteGlobal still means the global scope"
    Execute "Execute ""Dim fresh : fresh = 4"""
    Same Eval("fresh"), 4, "a Dim lands in the procedure"
End Sub
Inside 5
Ok IsEmpty(fresh), "and not outside it"
Sub Wrong
    On Error Resume Next
    Execute "x = Eval()"
    Same Err.Number, CLng(450), "without a text"
End Sub
Wrong
