' Errors in members reach the caller, those in Class_Terminate nobody.
Dim x, o
On Error Resume Next
Class Raiser
    Public Property Get P : Err.Raise 77 : End Property
    Public Sub S : Err.Raise 78 : End Sub
    Private Sub Class_Initialize : End Sub
    Private Sub Class_Terminate : Err.Raise 79 : End Sub
End Class
Set o = New Raiser
x = o.P
Ok Err.Number = 77, "an error in a property"
Err.Clear
o.S
Ok Err.Number = 78, "in a method"
Err.Clear
Set o = Nothing
Ok Err.Number = 0, "an error at an object's end goes nowhere"
Class BadInit
    Private Sub Class_Initialize : Err.Raise 80 : End Sub
End Class
Set o = New BadInit
Ok Err.Number = 80, "an error in Class_Initialize"
