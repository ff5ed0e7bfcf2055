' The last of two procedures of one name counts.
Function Which : Which = 1 : End Function
Function Which : Which = 2 : End Function
Same Which, 2, "the last of two procedures counts"
