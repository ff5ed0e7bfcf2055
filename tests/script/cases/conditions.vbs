Dim r, i
If Null Then r = 1 Else r = 2
Same r, 2, "If Null is false"
If "TRUE" Then r = 1 Else r = 2
Same r, 1, "the text TRUE is true"
If "#TRUE#" Then r = 1 Else r = 2
Same r, 1, "the text #TRUE# is true"
If "-1" Then r = 1 Else r = 2
Same r, 1, "the text -1 is true"
If 0.1 Then r = 1 Else r = 2
Same r, 1, "0.1 is true"
If "0" Then r = 1 Else r = 2
Same r, 2, "the text 0 is false"
If Empty Then r = 1 Else r = 2
Same r, 2, "Empty is false"
Fails 13, "If ""abc"" Then x = 1"
Fails 13, "If """" Then x = 1"
Fails 13, "If Array(1) Then x = 1"
Fails 91, "If Nothing Then x = 1"
i = 0
While Null
    i = i + 1
Wend
Same i, 0, "While Null does not run"
r = 0
If False Then r = 1 : r = 2
Same r, 0, "all statements of the line belong to the If"
If True Then r = 1 : r = r + 5
Same r, 6, "all of them run"
If False Then r = 1 : r = 2 Else r = 3 : r = r + 1
Same r, 4, "the same for Else"
If True Then If False Then r = 1 Else r = 2
Same r, 2, "Else belongs to the inner If"
If True Then r = 7 End If
Same r, 7, "End If on the line"
If False Then r = 1 Else r = 8 End If
Same r, 8, "End If after Else on the line"
If False Then
    r = 1
ElseIf Null Then
    r = 2
ElseIf True Then
    r = 3
Else
    r = 4
End If
Same r, 3, "ElseIf"
If False Then
    r = 1
Else r = 5
End If
Same r, 5, "a statement right after Else"
If False Then
    r = 1
Else r = 6 End If
Same r, 6, "and End If right after it"
If True Then
End If
Same r, 6, "an empty block"
Select Case 3
    Case 1 : r = "one"
    Case 2, 3 : r = "two or three"
    Case Else : r = "else"
End Select
Same r, "two or three", "several values"
Select Case "x"
    Case "y"
        r = 1
    Case Else
        r = 2
End Select
Same r, 2, "Case Else"
Select Case 5
    Case 1
        r = 9
End Select
Same r, 2, "no case fits"
Select Case Null
    Case Null
        r = 1
    Case Else
        r = 3
End Select
Same r, 3, "Null fits no case"
Select Case 1
    Case 1 r = 11
    Case 2 r = 12
End Select
Same r, 11, "Case 1 stmt without a separator"
Select Case True
    Case 1 > 2 : r = 1
    Case 2 > 1 : r = 2
End Select
Same r, 2, "Select Case True"
Select Case 1
End Select
Dim evaluated : evaluated = 0
Function Once(v)
    evaluated = evaluated + 1
    Once = v
End Function
Select Case Once(2)
    Case 1
    Case 2
    Case 3
End Select
Same evaluated, 1, "the selected value is evaluated once"
Select Case Once(1)
    Case Once(1), Once(2)
    Case Once(3)
End Select
Same evaluated, 3, "cases are tried in order until one fits"
Fails 13, "Select Case 1 : Case Array(1) : End Select"
