' A Const is visible before its line and cannot be assigned.
Function Which : Which = 1 : End Function
Same Late, 42, "a Const is visible before its line"
Const Late = 42
Fails 501, "Late = 1"
Fails 501, "Which = 3"
Fails 501, "vbCrLf = 3"
Fails 501, "Set Late = Nothing"
Const Neg = -5, Txt = "t", Both = &h10
Same Neg, -5, "a negative constant"
Same Txt & Both, "t16", "several on a line"
