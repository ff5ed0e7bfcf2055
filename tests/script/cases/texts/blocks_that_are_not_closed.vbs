' An If with nothing after Then is a block, at the end of the text too.
Fails 1014, "Execute ""If False Then"""
Fails 1014, "If True Then"
Fails 1042, "Select Case 1" & vbLf & "Case 1" & vbLf & "x = True End Select"
Fails 0, "Select Case 1" & vbLf & "Case 1" & vbLf & "x = True : End Select"
