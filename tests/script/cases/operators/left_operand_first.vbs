' A left operand is taken before the right one changes it.
Dim v : v = 1
Function Change
    v = 10
    Change = 1
End Function
Same v + Change, 2, "the left operand is evaluated first"
v = 1
Same v * 5 + Change, 6, "also in a chain"
v = "a"
Same v & Change & v, "a110", "also in a chain of texts"
v = 1
Ok Not (v < Change), "also in a comparison"
