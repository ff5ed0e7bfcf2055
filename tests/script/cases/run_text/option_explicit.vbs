' Option Explicit holds per text.
Dim x, y
Execute "Option Explicit" & vbLf & "Dim decl : decl = 1"
notDeclared = 1
Same notDeclared, 1, "Option Explicit holds per text"
Fails 500, "Option Explicit : undeclared1 = 1"
Fails 500, "Option Explicit : y = undeclared2"
Fails 500, "Option Explicit : undeclared3.x = 1"
Fails 500, "Option Explicit : For undeclared4 = 1 To 2 : Next"
