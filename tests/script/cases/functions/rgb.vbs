' RGB.
Gives "RGB(1, 2, 3)", "Long", "197121"
Gives "RGB(300, 0, 0)", "Long", "255"
Fails 5, "x = RGB(-1, 0, 0)"
