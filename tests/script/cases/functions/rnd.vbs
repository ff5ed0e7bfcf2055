' Rnd gives the classic sequence.
Same Rnd, CSng(0.7055475), "the first number"
Same Rnd, CSng(0.533424), "the second"
Same Rnd(0) = Rnd(0), True, "0 repeats"
Dim a, b
a = Rnd(-5)
b = Rnd(-5)
Same a, b, "the same negative number gives the same number"
Randomize 3
a = Rnd
Ok a >= 0 And a < 1, "between 0 and 1"
Randomize
a = Rnd
Ok a >= 0 And a < 1, "after Randomize"
Same TypeName(Rnd), "Single", "type"
