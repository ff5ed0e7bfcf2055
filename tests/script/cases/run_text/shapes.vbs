' Blanks around an expression, and one expression only.
Dim y
Same Eval(" 7 "), 7, "blanks around"
Fails 1025, "y = Eval(""1 2"")"
Fails 450, "y = Eval()"
Fails 450, "y = Eval(1, 2)"
