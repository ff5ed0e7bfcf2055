' While and Wend.
Dim i
i = 0
While i < 3
    i = i + 1
Wend
Same i, 3, "While"
