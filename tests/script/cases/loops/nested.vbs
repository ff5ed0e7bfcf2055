' Loops in loops, and the ways out of them.
Dim i, n
n = 0
For i = 1 To 3
    Do
        n = n + 1
        If n Mod 2 = 0 Then Exit Do
    Loop
Next
Same n, 6, "loops in loops"
n = 0
Do
    For i = 1 To 3
        n = n + 1
        If n = 2 Then Exit Do
    Next
Loop
Same n, 2, "Exit Do leaves a For on its way"
