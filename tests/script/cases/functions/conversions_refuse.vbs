' What no conversion takes.
Dim f
For Each f In Array("CInt", "CLng", "CBool", "CDbl", "CStr", "CSng", "CByte", "CCur", "CDate")
    Fails 94, "x = " & f & "(Null)"
    Fails 91, "x = " & f & "(Nothing)"
    Fails 13, "x = " & f & "(Array(1))"
    Fails 450, "x = " & f & "()"
Next
