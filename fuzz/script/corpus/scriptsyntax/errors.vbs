Dim x, r, o
x = "kept"
On Error Resume Next
x = 1 / 0
Ok Err.Number = 11, "Err.Number"
Same Err.Description, "Division by zero", "Err.Description"
Same x, "kept", "the failed assignment did nothing"
Ok Err = 11, "Number is the default"
Err.Clear
Ok Err.Number = 0, "Clear"
Same Err.Description, "", "clears the text"
x = CLng("abc")
Ok Err.Number = 13, "another"
On Error Resume Next
Ok Err.Number = 0, "On Error Resume Next clears"
x = 1 / 0
On Error GoTo 0
Ok Err.Number = 0, "On Error GoTo 0 clears"
Sub Thrower
    x = "before"
    Err.Raise 1000, "me", "my text"
    x = "after"
End Sub
On Error Resume Next
Thrower
r = "next"
Ok Err.Number = 1000, "an error of a procedure goes to the caller"
Same Err.Source, "me", "with its source"
Same Err.Description, "my text", "and its text"
Same x, "before", "the procedure ended"
Same r, "next", "the caller went on after the call"
Err.Clear
Sub Deep3 : Err.Raise 5 : End Sub
Sub Deep2 : Deep3 : x = "no" : End Sub
Sub Deep1
    On Error Resume Next
    Deep2
    x = "caught " & Err.Number
End Sub
Deep1
Same x, "caught 5", "through several levels"
Err.Clear
Sub OwnHandler
    On Error Resume Next
    x = 1 / 0
    x = "went on"
End Sub
OwnHandler
Same x, "went on", "a handler of its own"
Err.Clear
On Error GoTo 0
Sub NoHandler
    On Error Resume Next
    On Error GoTo 0
    x = 1 / 0
End Sub
Fails 11, "NoHandler"
On Error Resume Next
' Conditions that fail
r = ""
If 1 / 0 Then
    r = "then"
Else
    r = "else"
End If
Same r, "then", "a failing If takes the Then branch"
Err.Clear
r = ""
If 1 / 0 Then r = "then" Else r = "else"
Same r, "then", "also on one line"
r = ""
If False Then
    r = "if"
ElseIf 1 / 0 Then
    r = "elseif"
End If
Same r, "elseif", "also ElseIf"
r = ""
Select Case 1
    Case 1 / 0
        r = "first"
    Case 1
        r = "second"
End Select
Same r, "first", "a failing Case enters it"
r = 0
Do While 1 / 0
    r = r + 1
    If r = 3 Then Exit Do
Loop
Same r, 3, "a failing Do While enters the body"
r = 0
Do
    r = r + 1
Loop While 1 / 0
Same r, 1, "a failing Loop While leaves"
r = 0
Do
    r = r + 1
Loop Until 1 / 0
Same r, 1, "a failing Loop Until leaves"
Err.Clear
Set o = Nothing
o.Foo
Ok Err.Number = 91, "a member of Nothing"
Err.Clear
With o
    .Bar = 1
End With
Ok Err.Number = 91, "inside With"
Err.Clear
x = 5
x.y = 1
Ok Err.Number = 424, "a member of a number"
Err.Clear
Err.Raise 6
Same Err.Description, "Overflow", "the text of a known number"
Err.Clear
Err.Raise 12345
Same Err.Description, "Unknown runtime error", "the text of an unknown one"
Err.Clear
Err.Raise 0
Ok Err.Number = 5, "Raise 0"
Err.Clear
Err.Raise -2147220991, "src", "negative"
Ok Err.Number = -2147220991, "a negative number"
Err.Clear
Err.Raise vbObjectError + 5, , "no source"
Same Err.Description, "no source", "an argument left out"
Err.Clear
Err.Number = 99
Ok Err.Number = 99, "Number can be assigned"
Err.Description = "d" : Err.Source = "s" : Err.HelpFile = "f" : Err.HelpContext = 3
Same Err.Description & Err.Source & Err.HelpFile & Err.HelpContext, "dsf3", "and the others"
Err.Clear
Same Err.HelpContext & Err.HelpFile & Err.Source, "0", "Clear takes them all"
x = CInt("abc") + 1
Ok Err.Number = 13, "13"
x = 3
Ok Err.Number = 13, "a statement that succeeds leaves Err alone"
Err.Clear
Function Fail(n)
    Err.Raise n
    Fail = 1
End Function
x = "old"
x = Fail(7) + Fail(8)
Ok Err.Number = 7, "the first error ends the statement"
Same x, "old", "nothing is assigned"
Err.Clear
Dim k : k = 0
For k = 1 To 3
    x = 1 / 0
Next
Same k, 4, "a loop goes on"
Err.Clear
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
Err.Clear
Sub WithLoop
    Dim i
    For i = 1 To 2
        Err.Raise 90 + i
    Next
End Sub
WithLoop
Ok Err.Number = 91, "the first error leaves the procedure"
