' Nothing in a variable lacks its object; Nothing that an expression gave takes no index.
Fails 13, "x = Array(Nothing)(0)(0)"
Fails 13, "a = Array(Nothing) : x = a(0)(0)"
Fails 91, "Set n = Nothing : x = n(0)"
