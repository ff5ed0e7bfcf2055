' Keys keep their order, can be renamed, and are there once.
Dim d, k, x
Set d = CreateObject("Scripting.Dictionary")
d.Add "a", 10
d.Add "b", "two"
d.Add 3, 3.5
d("new") = 5
Fails 32811, "d.Remove ""nope"""
Fails 457, "d.Add ""a"", 2"
d.Key("b") = "B"
Ok d.Exists("B") And Not d.Exists("b"), "Key renames"
Fails 32811, "d.Key(""nope"") = 1"
k = d.Keys
Same k(0) & "," & k(1) & "," & k(2) & "," & k(3), "a,B,3,new", "Keys, in order"
k = d.Items
Same k(0) & "," & k(1), "10,two", "Items"
Same d.Keys()(0), "a", "an index after Keys()"
Same d.Items(1), "two", "or right after Items"
Set d("obj") = d
Ok d("obj") Is d, "an object as item"
d.Remove "obj"
x = ""
For Each k In d
    x = x & k & ";"
Next
Same x, "a;B;3;new;", "For Each walks the keys"
