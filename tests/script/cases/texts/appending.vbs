' A text grows by appending, and copies taken before stay as they were.
Dim s, i
For i = 1 To 1000
    s = s & "0123456789"
Next
Same Len(s), CLng(10000), "appending"
Dim t : t = s
s = s & "x"
Same Len(t), CLng(10000), "a copy taken before an append stays as it was"
s = s & s
Same Len(s), CLng(20002), "appending a text to itself"
s = "a"
s = s & 1 & Null & Empty & True
Same s, "a1True", "appending what is no text"
s = Null
s = s & "x"
Same s, "x", "appending to Null"
s = Empty
s = s & 1
Same s, "1", "appending to Empty"
Function ChangesS
    s = "changed"
    ChangesS = "!"
End Function
s = "old"
s = s & ChangesS
Same s, "old!", "the old value is taken first"
