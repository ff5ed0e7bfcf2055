' A field cannot be read with empty parentheses: an array lacks its index, any other value is no procedure.
Class Fields
    Public List(3)
    Public Free()
    Public Scalar
End Class
Dim o : Set o = New Fields
o.List(1) = "x"
Fails 9, "x = o.List()"
Fails 9, "x = o.Free()"
Fails 5, "x = o.Scalar()"
Same o.List(1), "x", "with an index it can"
Same UBound(o.List), CLng(3), "or without parentheses"
