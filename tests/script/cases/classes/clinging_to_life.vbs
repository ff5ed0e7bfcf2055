' An object that stores itself at its end lives on.
Dim o
Dim kept
Class Clinger
    Public Mark
    Private Sub Class_Terminate
        Set kept = Me
    End Sub
End Class
Set o = New Clinger
o.Mark = 5
Set o = Nothing
Same kept.Mark, 5, "an object that stores itself at its end lives on"
Set kept = Nothing
