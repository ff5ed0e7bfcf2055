' The first case that has an equal value runs; Null equals none.
Dim r
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
