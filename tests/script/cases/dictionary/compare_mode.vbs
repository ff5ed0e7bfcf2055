' CompareMode decides whether keys know case; it is set while there are none.
Dim d
Set d = CreateObject("Scripting.Dictionary")
d("a") = 1
d.RemoveAll
Same d.Count, CLng(0), "RemoveAll"
d.CompareMode = vbTextCompare
d("Key") = 1
Ok d.Exists("KEY"), "CompareMode"
Fails 5, "d.CompareMode = 0"
