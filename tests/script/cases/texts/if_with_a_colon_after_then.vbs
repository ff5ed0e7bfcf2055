' Anything but a comment after Then makes an If of one line, even a colon alone.
Dim r
r = 0
If False Then :
r = 1
Same r, 1, "the next line is not part of it"
If True Then : r = 2 : End If
Same r, 2, "statements after the colon are"
If False Then ' a comment
    r = 3
End If
Same r, 2, "a comment is nothing: this is a block"
Fails 1024, "If True Then :" & vbLf & "x = 1" & vbLf & "End If"
