' A number ends where no digit of its base follows, even when a keyword does.
Gives "&h01or&h02", "Integer", "3"
Gives "&h0fxor&h05", "Integer", "10"
Gives "&o17xor&o1", "Integer", "14"
Gives "1or 2", "Integer", "3"
Gives "5mod 3", "Integer", "2"
Dim hello, r
hello = "b"
Same "a"&hello, "ab", "an ampersand before a word that is no number joins texts"
If &h10Then r = 1
Same r, 1, "Then right after a number"
If r = 1Then r = 2Else r = 3
Same r, 2, "Else too"
