' Arrays in arrays are reached and changed in place, and are copied with their holder.
Dim deep(1)
deep(0) = Array(Array(1, 2), 3)
deep(0)(0)(1) = "x"
Same deep(0)(0)(1), "x", "three levels down"
deep(1) = deep(0)
deep(0)(0)(1) = "y"
Same deep(1)(0)(1), "x", "a nested copy keeps its own"
