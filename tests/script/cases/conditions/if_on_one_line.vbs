' All statements of the line belong to the If; an Else to the inner one.
Dim r
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
