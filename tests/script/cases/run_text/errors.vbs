' An error leaves the text, unless it goes on itself.
Dim x
x = 50
Sub ResumeInText
    On Error Resume Next
    Execute "x = 1 / 0 : x = 99"
    Ok Err.Number = 11, "an error leaves the text"
    Same x, 50, "and the rest of it is not run"
    Err.Clear
    Execute "On Error Resume Next : x = 1 / 0 : x = 99"
    Same x, 99, "unless it goes on itself"
End Sub
ResumeInText
