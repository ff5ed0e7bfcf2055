' Unary plus leaves everything as it is, objects too.
Dim d, e
Set d = CreateObject("Scripting.Dictionary")
Same TypeName(+d), "Dictionary", "an object stays one"
Ok +d Is d, "the same one"
Set e = +d
Ok e Is d, "and can be set"
Same TypeName(+Nothing), "Nothing", "Nothing"
Same TypeName(+Null), "Null", "Null"
Gives "+""5""", "String", "5"
Gives "+True", "Boolean", "True"
Fails 438, "e1 = +CreateObject(""Scripting.Dictionary"")"
Fails 13, "x = +Array(1)"
