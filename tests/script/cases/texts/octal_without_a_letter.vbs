' An ampersand before digits is an octal number where no operand stands before it.
Gives "&100", "Integer", "64"
Gives "&177777", "Integer", "-1"
Gives "&177777&", "Long", "65535"
Gives "1 + &10", "Integer", "9"
Gives "(&7)", "Integer", "7"
Gives """a""&1", "String", "a1"
Gives "5&10", "String", "510"
Dim o, text
text = "t"
Same text&12, "t12", "after a name it joins texts"
Class WithKeyword
    Public [Then]
End Class
Set o = New WithKeyword
o.Then = "k"
Same o.Then&1, "k1", "after a member that is named like a keyword, too"
Fails 1002, "x = &8"
