' A call with and without Call, parentheses and blanks.
Dim x, got
Sub Note1(v) : got = v : End Sub
Sub Note2(v, w) : got = v & "," & w : End Sub
Note2 (2)*8, 7
Same got, "16,7", "an expression that starts with a parenthesis"
Note1(10)-3
Same got, 7, "one argument that starts with a parenthesis"
Note1.5
Same got, 0.5, "a number right after the name"
Note1(4)
Same got, 4, "one argument in parentheses"
Same CInt (2) * 3, 6, "blank before the parenthesis of a function"
Call Note2(1, 2)
Same got, "1,2", "Call"
Sub None : got = "none" : End Sub
None
Same got, "none", "no parameters"
None()
Call None
Call None()
Same got, "none", "with empty parentheses"
Sub OneLine() x=1 End Sub
OneLine
Same x, 1, "a Sub on one line without separators"
