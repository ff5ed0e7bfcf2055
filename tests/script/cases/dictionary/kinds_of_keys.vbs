' Objects may be keys, arrays may not.
Dim d, x
Set d = CreateObject("Scripting.Dictionary")
Dim keyObject : Set keyObject = CreateObject("scripting.dictionary")
d.Add keyObject, "by object"
Same d(keyObject), "by object", "an object as key"
Fails 5, "d.Add Array(1), 1"
Fails 438, "d.NoSuchMember"
Fails 450, "d.Add 1"
Fails 450, "x = d.Exists"
