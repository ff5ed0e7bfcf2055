' For Each over arrays and collections.
Dim n, x, d
n = ""
For Each x In Array(1, "b", 3)
    n = n & x
Next
Same n, "1b3", "For Each over an array"
n = 0
For Each x In Array()
    n = n + 1
Next
Same n, 0, "an empty array has no pass"
Dim a(2)
a(0) = 1 : a(1) = 2 : a(2) = 3
For Each x In a
    x = x * 10
Next
Same a(0) & a(1) & a(2), "123", "changing the item does not write back"
Dim m(1, 2)
m(0, 0) = "a" : m(1, 0) = "b" : m(0, 1) = "c" : m(1, 1) = "d" : m(0, 2) = "e" : m(1, 2) = "f"
n = ""
For Each x In m
    n = n & x
Next
Same n, "abcdef", "two dimensions: the first index runs fastest"
Set d = CreateObject("Scripting.Dictionary")
d.Add "k1", 1
d.Add "k2", 2
n = ""
For Each x In d
    n = n & x
Next
Same n, "k1k2", "a collection"
