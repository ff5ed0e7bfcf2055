' A function name inside its body is its current result.
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
