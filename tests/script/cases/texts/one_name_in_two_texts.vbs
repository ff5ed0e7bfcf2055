' A name is a constant or a variable, across all texts of a program.
ExecuteGlobal "Const madeConst = 1"
ExecuteGlobal "Dim madeVariable"
Fails 1041, "Dim madeConst"
Fails 1041, "Const madeVariable = 1"
Fails 0, "Const madeConst = 2"
Fails 0, "Dim madeVariable"
Same madeConst, 2, "the text that failed changed nothing, the last constant counts"
