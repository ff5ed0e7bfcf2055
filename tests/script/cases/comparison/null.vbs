' Null makes every comparison Null.
Ok IsNull(Null = 1), "Null compares to Null"
Ok IsNull(1 < Null), "Null on the right"
Ok IsNull(Null <> Null), "both"
