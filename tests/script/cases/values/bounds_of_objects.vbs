' LBound and UBound look through an object at its default value.
Class ListDefault
    Public Default Property Get Items
        Items = Array(1, 2, 3)
    End Property
End Class
Class NeedsArgument
    Public Default Function Item(i)
        Item = i
    End Function
End Class
Class NoDefault
End Class
Dim f
For Each f In Array("LBound", "UBound")
    Fails 91, "x = " & f & "(Nothing)"
    Fails 438, "x = " & f & "(New NoDefault)"
    Fails 450, "x = " & f & "(New NeedsArgument)"
    Fails 13, "x = " & f & "(Err)"
    Fails 13, "x = " & f & "(5)"
Next
Same UBound(New ListDefault), CLng(2), "an array as default"
Same LBound(New ListDefault), CLng(0), "its lower bound"
Fails 9, "x = UBound(New ListDefault, 2)"
