' A parameter that a text hands on stays the way to the caller's element, whatever becomes of the array meanwhile.
Dim list
ReDim list(1000)
Sub Shrink(element)
    ReDim list(0)
    On Error Resume Next
    element = 5
    Ok Err.Number = 9, "an element that is gone"
End Sub
Sub HandOn(element)
    Execute "Shrink element"
End Sub
HandOn list(1000)
Ok UBound(list) = 0, "the array was made anew while its element was passed on"
ReDim list(3)
Sub Fill(element)
    ReDim list(5)
    element = 7
End Sub
Sub HandOnToFill(element)
    Execute "Fill element"
End Sub
HandOnToFill list(3)
Same list(3), 7, "the element of the new array is the same place"
Dim copy
Sub ReadIt(element)
    copy = list
    Execute "Dim was : was = element"
    element = 1
End Sub
list(2) = 4
ReadIt list(2)
Same copy(2), 4, "a copy of the array keeps what it had"
Same list(2), 1, "the element is the array's own"
