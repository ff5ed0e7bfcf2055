' Under Resume Next a selected value that fails skips all cases, a case that fails is entered.
On Error Resume Next
Dim r
r = "none"
Select Case 1 / 0
    Case 0
        r = "zero"
    Case Empty
        r = "empty"
    Case Else
        r = "else"
End Select
Same r, "none", "nothing of the Select runs"
Same Err.Number, CLng(11), "the error stands"
Err.Clear
r = ""
Select Case 1
    Case 2
        r = r & "two"
    Case 1 / 0
        r = r & "failed"
    Case 1
        r = r & "one"
End Select
Same r, "failed", "the case that fails is entered, and no other"
