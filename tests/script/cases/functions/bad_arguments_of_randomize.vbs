' A seed is a number. One that is none changes nothing.
Fails 13, "Randomize ""abc"""
Fails 94, "Randomize Null"
Fails 91, "Randomize Nothing"
Fails 13, "Randomize Array(1)"
Fails 450, "Randomize 1, 2"
Same Rnd, CSng(0.7055475), "the sequence starts as ever"
