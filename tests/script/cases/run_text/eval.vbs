' Eval gives the value of a text, and of anything else itself.
Dim x
Same Eval("1 + 2"), 3, "Eval"
Same Eval(5), 5, "Eval of something that is no text returns it"
Ok IsNull(Eval(Null)), "even Null"
x = 4
Same Eval("x * 2"), 8, "Eval sees variables"
Ok Eval("x = 4"), "an equals sign compares"
