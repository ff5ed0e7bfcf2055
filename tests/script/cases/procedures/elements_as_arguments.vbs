' An element is passed by reference, and stays the same place.
Sub Bump(n)
    n = n + 1
End Sub
Dim arr(3)
arr(1) = 5
Bump arr(1)
Same arr(1), 6, "an array element by reference"
Sub BumpAll(list, place)
    Bump list(place)
End Sub
BumpAll arr, 1
Same arr(1), 7, "an element of an array that was passed by reference"
Sub Shadow(e)
    arr(1) = 100
    Same e, 100, "the element is the same place as the global array's"
    e = 200
    Same arr(1), 200, "in both directions"
End Sub
Shadow arr(1)
Dim nest(1)
nest(0) = Array(1, 2)
Same nest(0)(1), 2, "an index after an index"
nest(0)(1) = 9
Same nest(0)(1), 9, "assigned in place"
