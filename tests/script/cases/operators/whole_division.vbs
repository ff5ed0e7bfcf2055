' \ and Mod round both sides first, half to even.
Gives "4.6\1.49", "Long", "5"
Gives "11.6 Mod 5.5", "Long", "0"
Gives "-7\2", "Integer", "-3"
Gives "-7 Mod 3", "Integer", "-1"
Gives "7 Mod -3", "Integer", "1"
Gives "2.5\1", "Long", "2"
Gives "3.5\1", "Long", "4"
Gives "True\True", "Integer", "1"
