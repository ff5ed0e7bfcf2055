' How many passes a For has, and what its variable is after them.
Dim i, n
n = 0
For i = 3 To 1 : n = n + 1 : Next
Same n, 0, "no pass"
Same i, 3, "but the variable is set"
n = 0
For i = 3 To 1 Step -1 : n = n * 10 + i : Next
Same n, 321, "counting down"
n = 0
For i = 0 To -2 Step True : n = n + 1 : Next
Same n, 3, "Step True counts down"
n = 0
For i = 0 To Empty : n = n + 1 : Next
Same n, 1, "an Empty limit is 0"
n = 0
For i = 1 To 2 Step 0.5 : n = n + 1 : Next
Same n, 3, "broken steps"
Same TypeName(i), "Double", "and a Double variable"
n = ""
For i = "1" To "3" : n = n & i : Next
Same n, "123", "bounds that are texts of numbers"
