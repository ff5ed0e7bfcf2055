' \u and four digits name a character; with fewer digits the u is a letter.
Dim r
Set r = New RegExp
r.Pattern = "^\u0041\u00e9$"
Ok r.Test("A" & ChrW(233)), "two characters"
Ok Not r.Test("u0041"), "not the letters"
r.Pattern = "[\u0410-\u0412]"
Ok r.Test(ChrW(&h411)), "in a range"
r.Pattern = "^\\u0041$"
Ok r.Test("\u0041"), "a backslash before it is a character of its own"
r.Pattern = "^\u41$"
Ok r.Test("u41"), "two digits are too few"
r.Pattern = "\x41"
Ok r.Test("A"), "\x names one by two digits"
