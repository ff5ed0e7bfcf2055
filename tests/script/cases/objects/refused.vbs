' Nothing of the machine can be made.
Dim x
For Each x In Array("WScript.Shell", "Scripting.FileSystemObject", "MSXML2.XMLHTTP", "ADODB.Stream", "", "x")
    Fails 429, "Set y = CreateObject(""" & x & """)"
Next
Fails 429, "Set y = GetObject(""winmgmts:"")"
Fails 429, "Set y = LoadPicture(""a.bmp"")"
