' Start, end and step are evaluated once, in that order.
Dim i, log
log = ""
Function Note(t, v)
    log = log & t
    Note = v
End Function
For i = Note("s", 1) To Note("e", 3) Step Note("t", 1)
    log = log & i
Next
Same log, "set123", "start, end and step are evaluated once, in that order"
Same i, 4, "the variable ends beyond the limit"
