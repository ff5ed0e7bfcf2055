' Eval and Execute look through an object at its default value.
Class Code
    Public Text
    Public Default Property Get Value
        Value = Text
    End Property
End Class
Dim o, r
Set o = New Code
o.Text = "1 + 2"
Same Eval(o), 3, "Eval of an object's text"
o.Text = 7
Same Eval(o), 7, "or of its number"
o.Text = "r = 5"
Execute o
Same r, 5, "Execute of an object's text"
o.Text = "r = 6"
ExecuteGlobal o
Same r, 6, "ExecuteGlobal too"
Fails 91, "x = TypeName(Eval(Nothing))"
Fails 91, "Execute Nothing"
Fails 438, "Execute CreateObject(""Scripting.Dictionary"")"
