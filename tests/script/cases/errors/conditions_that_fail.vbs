' Under Resume Next a failing If or ElseIf takes its branch.
Dim r
On Error Resume Next
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
