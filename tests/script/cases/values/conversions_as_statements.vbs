' A conversion called for nothing is 458, whatever its argument.
Dim f
For Each f In Array("CInt", "CLng", "CBool", "CDbl", "CStr", "CSng", "CByte", "CCur", "CDate")
    Fails 458, f & " 5"
    Fails 458, f & "(5)"
    Fails 458, "Call " & f & "(5)"
    Fails 458, f & "(""abc"")"
    Fails 0, "x = " & f & "(5)"
Next
Sub InText
    On Error Resume Next
    Execute "CInt 5"
    Same Err.Number, CLng(458), "also in a text that runs inside a procedure"
End Sub
InText
Fails 0, "Abs -5"
