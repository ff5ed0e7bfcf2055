' The variable grows as it must; the body may change it or leave.
Dim i, n, x
For i = 32766 To 32769 : Next
Same TypeName(i), "Long", "an Integer variable grows to Long"
Same i, 32770, "beyond 32767"
n = 0
For i = 1 To 3
    n = n + 1
    i = i + 1
Next
Same n, 2, "the body may change the variable"
n = 0
For i = 1 To 10
    If i = 4 Then Exit For
    n = n + 1
Next
Same n, 3, "Exit For"
Same i, 4, "keeps the variable"
x = 5
For i = 1 To x
    x = 1
    n = i
Next
Same n, 5, "the limit is not evaluated again"
