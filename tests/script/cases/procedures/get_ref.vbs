' GetRef gives a procedure as an object.
Dim x, got
Function Twice(n)
    Twice = n * 2
End Function
Sub Note1(v) : got = v : End Sub
Dim ref : Set ref = GetRef("twice")
Same ref(21), 42, "GetRef ignores case"
Fails 5, "Set x = GetRef(""noSuch"")"
Fails 13, "Set x = GetRef(5)"
Set ref = GetRef("Note1")
ref 17
Same got, 17, "a reference called as a statement"
