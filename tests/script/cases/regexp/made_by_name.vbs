' CreateObject makes a regular expression, as New does, and New does so even beside a class of that name.
Class RegExp
    Public Mine
End Class
Dim made, other
Set made = CreateObject("vbscript.regexp")
Same TypeName(made), "IRegExp2", "CreateObject"
made.Pattern = "b"
Ok made.Test("abc"), "which works"
Set other = New RegExp
Same TypeName(other), "IRegExp2", "a class of the script does not hide it"
Fails 438, "x = (New RegExp).Mine"
