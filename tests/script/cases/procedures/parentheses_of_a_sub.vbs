' A Sub takes no parentheses around several arguments.
Dim x
Fails 1044, "strcomp(""x"",""y"")"
