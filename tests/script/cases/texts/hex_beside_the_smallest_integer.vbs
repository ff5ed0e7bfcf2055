' -32768 as a literal is a Long, however it is written.
Gives "&h8000", "Long", "-32768"
Gives "&hffff8000", "Long", "-32768"
Gives "&o100000", "Long", "-32768"
Gives "&h8001", "Integer", "-32767"
Gives "&h8000&", "Long", "32768"
