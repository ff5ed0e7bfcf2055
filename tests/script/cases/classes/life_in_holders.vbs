' An object ends when the last thing that holds it lets it go: a collection, an array, a variable.
Dim log, x
Class Life
    Public Name
    Private Sub Class_Initialize
        log = log & "[init]"
    End Sub
    Private Sub Class_Terminate
        log = log & "[end " & Name & "]"
    End Sub
End Class
Function Make(n)
    Set Make = New Life
    Make.Name = n
End Function
log = ""
Dim c : Set c = CreateObject("Scripting.Dictionary")
c.Add "k", Make("dict")
c.RemoveAll
Same log, "[init][end dict]", "an object in a dictionary"
log = ""
Dim list(2)
Set list(0) = Make("arr")
Erase list
Same log, "[init][end arr]", "an object in an array"
log = ""
Set x = Make("one")
Set x = Make("two")
Same log, "[init][init][end one]", "a variable assigned anew"
x = 0
Same log, "[init][init][end one][end two]", "or assigned a number"
