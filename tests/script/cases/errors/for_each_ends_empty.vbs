' After a walk over a collection its variable is Empty; after one over an array it has the last element.
Dim d, x, last
Set d = CreateObject("Scripting.Dictionary")
d.Add "k1", 1
d.Add "k2", 2
For Each x In d
    last = x
Next
Same last, "k2", "the walk came to the end"
Ok IsEmpty(x), "and left nothing in the variable"
For Each x In d
    If x = "k1" Then Exit For
Next
Same x, "k1", "Exit For keeps the item"
For Each x In Array(1, 2, 3)
Next
Same x, 3, "an array's last element stays"
