' Class_Terminate runs at the last release: of a variable, a procedure, a statement, a With.
Dim o, p, log, x
Class Life
    Public Name
    Private Sub Class_Initialize
        log = log & "[init]"
    End Sub
    Private Sub Class_Terminate
        log = log & "[end " & Name & "]"
    End Sub
End Class
log = ""
Set o = New Life
o.Name = "a"
Same log, "[init]", "Class_Initialize"
Set p = o
Set o = Nothing
Same log, "[init]", "not the last release"
Set p = Nothing
Same log, "[init][end a]", "Class_Terminate at the last release"
Sub Scope
    Dim l
    Set l = New Life
    l.Name = "local"
End Sub
log = ""
Scope
Same log, "[init][end local]", "a local object ends with its procedure"
log = ""
Function Make(n)
    Set Make = New Life
    Make.Name = n
End Function
x = Make("temp").Name
Same log, "[init][end temp]", "a temporary ends with its statement"
log = ""
With Make("with")
    Same .Name, "with", "With"
    Same log, "[init]", "lives inside"
End With
Same log, "[init][end with]", "and ends after"
