' Do, with its condition before or after the body, or none.
Dim i
i = 0
Do While i < 3 : i = i + 1 : Loop
Same i, 3, "Do While"
i = 0
Do Until i = 4 : i = i + 1 : Loop
Same i, 4, "Do Until"
i = 9
Do : i = i + 1 : Loop While i < 5
Same i, 10, "Loop While runs once at least"
i = 9
Do : i = i + 1 : Loop Until i > 12
Same i, 13, "Loop Until"
i = 0
Do
    i = i + 1
    If i = 5 Then Exit Do
Loop
Same i, 5, "Exit Do"
