' IsEmpty, IsNull, IsObject and IsArray.
Gives "IsEmpty(Empty)", "Boolean", "True"
Gives "IsEmpty(0)", "Boolean", "False"
Gives "IsEmpty(Null)", "Boolean", "False"
Gives "IsNull(Null)", "Boolean", "True"
Gives "IsNull("""")", "Boolean", "False"
Gives "IsObject(Nothing)", "Boolean", "True"
Gives "IsObject(5)", "Boolean", "False"
Gives "IsArray(Array())", "Boolean", "True"
