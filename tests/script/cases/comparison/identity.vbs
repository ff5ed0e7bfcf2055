' Is asks for the same object, and for objects only.
Dim d1, d2
Set d1 = CreateObject("Scripting.Dictionary")
Set d2 = d1
Ok d1 Is d2, "the same object"
Ok Not (d1 Is Nothing), "not Nothing"
Set d2 = Nothing
Ok d2 Is Nothing, "Nothing is Nothing"
Ok Nothing Is Nothing, "literal Nothing"
Fails 424, "x = (1 Is Nothing)"
Fails 91, "x = (Nothing = 1)"
