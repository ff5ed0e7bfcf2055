' Comments end a line, an underscore joins the next one.
Dim x
Rem a comment
x = 1 ' a comment
x = 1 : Rem another
x = 1 + _
    2 _
    + 3
Same x, 6, "lines joined"
