' A Boolean is inserted as its number.
Dim r
Set r = New RegExp
r.Pattern = "a"
Same r.Replace("bab", True), "b-1b", "True"
Same r.Replace("bab", False), "b0b", "False"
Same r.Replace("bab", 5), "b5b", "a number"
