' With takes an object; Nothing is one until it is used.
Fails 424, "With 5 : End With"
Fails 424, "With ""text"" : End With"
Fails 424, "With Empty : End With"
Fails 424, "With Array(1) : End With"
Fails 0, "With Nothing : End With"
Fails 91, "With Nothing : .x = 1 : End With"
