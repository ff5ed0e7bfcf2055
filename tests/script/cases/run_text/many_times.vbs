' The same text many times.
Dim x
x = 0
Dim i
For i = 1 To 50
    Execute "x = x + 1"
Next
Same x, 50, "the same text many times"
