' Assigning an array copies it; by reference it is the same one.
Dim b, c
b = Array(1, 2, 3)
c = b
c(0) = 99
Same b(0), 1, "assigning copies"
b(1) = 50
Same c(1), 2, "both ways"
Sub ChangeIt(list) : list(0) = "changed" : End Sub
Sub ChangeCopy(ByVal list) : list(0) = "copy" : End Sub
ChangeIt b
Same b(0), "changed", "an array by reference"
ChangeCopy b
Same b(0), "changed", "an array by value"
c = Array(b, b)
b(0) = "again"
Same c(0)(0), "changed", "an array in an array is a copy"
