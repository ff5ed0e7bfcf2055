' What is true: Null is not, texts by their word or number.
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
