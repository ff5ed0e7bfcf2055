Dim i, n, log, x, d
log = ""
Function Note(t, v)
    log = log & t
    Note = v
End Function
For i = Note("s", 1) To Note("e", 3) Step Note("t", 1)
    log = log & i
Next
Same log, "set123", "start, end and step are evaluated once, in that order"
Same i, 4, "the variable ends beyond the limit"
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
For i = 32766 To 32769 : Next
Same TypeName(i), "Long", "an Integer variable grows to Long"
Same i, 32770, "beyond 32767"
n = 0
For i = 1 To 3
    n = n + 1
    i = i + 1
Next
Same n, 2, "the body may change the variable"
n = 0
For i = 1 To 10
    If i = 4 Then Exit For
    n = n + 1
Next
Same n, 3, "Exit For"
Same i, 4, "keeps the variable"
x = 5
For i = 1 To x
    x = 1
    n = i
Next
Same n, 5, "the limit is not evaluated again"
On Error Resume Next
n = 0
i = 77
Err.Clear
For i = 1 To 1 / 0
    n = n + 1
    Same i, 77, "a failing bound leaves the variable untouched"
Next
Same n, 1, "a failing bound: the body runs once"
Ok Err.Number = 92, "and Next raises 92"
Err.Clear
n = 0
For i = 1 To 5
    n = n + 1
    i = "abc"
Next
Same n, 1, "a variable set to text ends the loop"
Ok Err.Number = 13, "with 13"
Err.Clear
n = 0
For Each x In 5
    n = n + 1
Next
Same n, 1, "For Each over a number: the body runs once"
Err.Clear
On Error GoTo 0
Fails 451, "For Each x In 5 : Next"
Fails 451, "For Each x In Empty : Next"
Fails 451, "For Each x In ""abc"" : Next"
Fails 13, "For i = ""a"" To 3 : Next"
Fails 94, "For i = Null To 3 : Next"
Fails 91, "For Each x In Nothing : Next"
n = ""
For Each x In Array(1, "b", 3)
    n = n & x
Next
Same n, "1b3", "For Each over an array"
n = 0
For Each x In Array()
    n = n + 1
Next
Same n, 0, "an empty array has no pass"
Dim a(2)
a(0) = 1 : a(1) = 2 : a(2) = 3
For Each x In a
    x = x * 10
Next
Same a(0) & a(1) & a(2), "123", "changing the item does not write back"
Dim m(1, 2)
m(0, 0) = "a" : m(1, 0) = "b" : m(0, 1) = "c" : m(1, 1) = "d" : m(0, 2) = "e" : m(1, 2) = "f"
n = ""
For Each x In m
    n = n & x
Next
Same n, "abcdef", "two dimensions: the first index runs fastest"
Set d = CreateObject("Scripting.Dictionary")
d.Add "k1", 1
d.Add "k2", 2
n = ""
For Each x In d
    n = n & x
Next
Same n, "k1k2", "a collection"
i = 0
Do While i < 3 : i = i + 1 : Loop
Same i, 3, "Do While"
i = 0
Do Until i = 4 : i = i + 1 : Loop
Same i, 4, "Do Until"
i = 9
Do : i = i + 1 : Loop While i < 5
Same i, 10, "Loop While runs once at least"
i = 9
Do : i = i + 1 : Loop Until i > 12
Same i, 13, "Loop Until"
i = 0
Do
    i = i + 1
    If i = 5 Then Exit Do
Loop
Same i, 5, "Exit Do"
i = 0
While i < 3
    i = i + 1
Wend
Same i, 3, "While"
n = 0
For i = 1 To 3
    Do
        n = n + 1
        If n Mod 2 = 0 Then Exit Do
    Loop
Next
Same n, 6, "loops in loops"
n = 0
Do
    For i = 1 To 3
        n = n + 1
        If n = 2 Then Exit Do
    Next
Loop
Same n, 2, "Exit Do leaves a For on its way"
Dim q(3)
For q_i = 0 To 3 : q(q_i) = q_i * q_i : Next
Same q(3), 9, "an undeclared control variable"
Function Sum(n)
    Dim k
    For k = 1 To n
        Sum = Sum + k
    Next
End Function
Same Sum(100), 5050, "a loop in a function"
Sub CountRef(ByRef c)
    For c = 1 To 3 : Next
End Sub
CountRef n
Same n, 4, "a control variable passed by reference"
