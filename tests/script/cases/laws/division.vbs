' Whole division and remainder belong together.
Dim i, j
For i = -7 To 7 Step 2
    For j = -3 To 3
        If j <> 0 Then Same (i \ j) * j + (i Mod j), i, i & " \ and Mod " & j
    Next
Next
