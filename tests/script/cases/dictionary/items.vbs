' Keys and items: adding, reading, assigning, removing.
Dim d, x
Set d = CreateObject("Scripting.Dictionary")
Same TypeName(d), "Dictionary", "TypeName"
d.Add "a", 1
d.Add "b", "two"
d.Add 3, 3.5
Same d.Count, CLng(3), "Count"
Same d("a"), 1, "the default member"
Same d.Item("b"), "two", "Item"
Same d(3), 3.5, "a number as key"
Same d(3.0), 3.5, "equal numbers are one key"
Ok d.Exists("a"), "Exists"
Ok Not d.Exists("A"), "keys know case"
Ok Not d.Exists("3"), "a text is no number"
d("a") = 10
Same d("a"), 10, "assigning an item"
d("new") = 5
Same d.Count, CLng(4), "assigning a new key adds it"
x = d("missing")
Ok IsEmpty(x), "reading a missing key gives Empty"
Ok d.Exists("missing"), "and adds it"
d.Remove "missing"
Ok Not d.Exists("missing"), "Remove"
