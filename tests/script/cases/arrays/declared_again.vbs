' In a later text a scalar may be declared again, an array may not; in one text nothing may.
Dim a(1), s
s = 1
Fails 13, "Dim a()"
ExecuteGlobal "Dim s"
Same s, 1, "a scalar may be declared again"
Fails 1041, "Dim q1 : Const q1 = 1"
Fails 1041, "Const q1 = 1 : Dim q1"
Fails 1026, "n = 3 : Dim z(n)"
