' What an array says of itself, and what Array makes.
Dim s, x
Dim b
b = Array(1, 2, 3)
s = 5
Same TypeName(b), "Variant()", "TypeName of an array"
Same VarType(b), 8204, "VarType of an array"
Ok IsArray(b), "IsArray"
Ok Not IsArray(s), "IsArray of a number"
Dim big(1, 1, 1, 1)
big(1, 0, 1, 0) = 4
Same big(1, 0, 1, 0), 4, "four dimensions"
x = Array()
Same UBound(x), CLng(-1), "Array without elements"
x = Array(1, "two", Null, Empty)
Same UBound(x), CLng(3), "Array"
Ok IsNull(x(2)), "holds Null"
Fails 13, "s = 1 : s(0) = 2"
