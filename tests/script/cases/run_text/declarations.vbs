' Procedures and classes may be added at run time.
Dim x, o
ExecuteGlobal "Function Added(n) : Added = n + 1 : End Function"
Same Added(1), 2, "a function added at run time"
Execute "Sub AddedSub : x = ""sub"" : End Sub"
AddedSub
Same x, "sub", "a procedure added by Execute"
ExecuteGlobal "Class Later : Public V : End Class"
Set o = New Later
o.V = 1
Same o.V, 1, "a class added at run time"
