' Under Resume Next a Do whose condition fails enters the body, a Loop whose condition fails leaves it.
Dim r
On Error Resume Next
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
