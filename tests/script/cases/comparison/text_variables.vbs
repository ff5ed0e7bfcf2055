' Where neither side is a literal, text is greater than any number.
Dim s, n
s = "5" : n = 5
Ok Not (s = n), "neither is a literal: text is greater than any number"
Ok s > n, "text is greater"
Ok n < s, "number is less"
Ok s <> n, "not equal"
Ok s >= n, "greater or equal"
Ok Not (s <= n), "not less or equal"
n = True
Ok s > n, "text is greater than a Boolean"
