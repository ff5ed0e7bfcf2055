' Inside a procedure the names of the text mean what they mean there.
Dim x, y
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
