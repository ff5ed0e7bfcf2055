Dim o, p, log, x
Class Point
    Public X, Y
    Public Function Length
        Length = Sqr(X * X + Y * Y)
    End Function
    Public Sub MoveBy(dx, dy)
        X = X + dx
        Me.Y = Me.Y + dy
    End Sub
End Class
Set o = New Point
o.X = 3 : o.Y = 4
Same o.Length, 5.0, "a method"
Same TypeName(o.Length), "Double", "its type"
o.MoveBy 1, 1
Same o.X & "," & o.Y, "4,5", "fields changed by a method"
Same TypeName(o), "Point", "TypeName is the class"
Ok IsObject(o), "IsObject"
Same VarType(o), 9, "VarType"
Set p = o
p.X = 100
Same o.X, 100, "Set shares the object"
Class Life
    Public Name
    Private Sub Class_Initialize
        log = log & "[init]"
    End Sub
    Private Sub Class_Terminate
        log = log & "[end " & Name & "]"
    End Sub
End Class
log = ""
Set o = New Life
o.Name = "a"
Same log, "[init]", "Class_Initialize"
Set p = o
Set o = Nothing
Same log, "[init]", "not the last release"
Set p = Nothing
Same log, "[init][end a]", "Class_Terminate at the last release"
Sub Scope
    Dim l
    Set l = New Life
    l.Name = "local"
End Sub
log = ""
Scope
Same log, "[init][end local]", "a local object ends with its procedure"
log = ""
Function Make(n)
    Set Make = New Life
    Make.Name = n
End Function
x = Make("temp").Name
Same log, "[init][end temp]", "a temporary ends with its statement"
log = ""
With Make("with")
    Same .Name, "with", "With"
    Same log, "[init]", "lives inside"
End With
Same log, "[init][end with]", "and ends after"
log = ""
Dim c : Set c = CreateObject("Scripting.Dictionary")
c.Add "k", Make("dict")
c.RemoveAll
Same log, "[init][end dict]", "an object in a dictionary"
log = ""
Dim list(2)
Set list(0) = Make("arr")
Erase list
Same log, "[init][end arr]", "an object in an array"
log = ""
Set x = Make("one")
Set x = Make("two")
Same log, "[init][init][end one]", "a variable assigned anew"
x = 0
Same log, "[init][init][end one][end two]", "or assigned a number"
Dim kept
Class Clinger
    Public Mark
    Private Sub Class_Terminate
        Set kept = Me
    End Sub
End Class
Set o = New Clinger
o.Mark = 5
Set o = Nothing
Same kept.Mark, 5, "an object that stores itself at its end lives on"
Set kept = Nothing
' Properties
Class Props
    Private m_v, m_o, m_list(9)
    Public Property Get V : V = m_v : End Property
    Public Property Let V(n) : m_v = n + 1 : End Property
    Public Property Get O : Set O = m_o : End Property
    Public Property Set O(n) : Set m_o = n : End Property
    Public Property Get At(i) : At = m_list(i) : End Property
    Public Property Let At(i, n) : m_list(i) = n : End Property
    Public Property Get Two(i, j) : Two = m_list(i) & m_list(j) : End Property
    Public Property Get RO : RO = 1 : End Property
    Public Property Let WO(n) : m_v = n : End Property
    Public Property Let Taker(n) : m_v = TypeName(n) : End Property
    Private Sub Hidden : End Sub
    Private Secret
    Public Scalar
    Public Function F(n) : F = n : End Function
    Public Function UsesOwn
        V = 10
        UsesOwn = V
    End Function
    Public Function CallsOwn : CallsOwn = F(3) + Me.F(4) : Hidden : Me.Hidden : End Function
End Class
Set o = New Props
o.V = 5
Same o.V, 6, "Let and Get"
Set o.O = New Point
o.O.X = 3
Same o.O.X, 3, "Property Set"
o.At(3) = "t"
Same o.At(3), "t", "an indexed property"
o.At(4) = "u"
Same o.Two(3, 4), "tu", "two indices"
Same o.UsesOwn, 11, "own properties by bare name"
Same o.CallsOwn, 7, "own methods by bare name and Me"
o.Taker = CreateObject("Scripting.Dictionary")
Same o.V, "Dictionary", "Property Let receives the object itself"
Fails 438, "o.RO = 2"
Fails 438, "x = o.WO"
Fails 438, "Set o.V = o"
Fails 438, "o.Hidden"
Fails 438, "x = o.Secret"
Fails 438, "o.Secret = 1"
Fails 438, "x = o.Missing"
Fails 438, "o.Missing = 1"
Fails 438, "o.Missing 1"
Fails 438, "x = o.Scalar(1)"
o.Scalar = 6
Fails 5, "x = o.Scalar()"
o.Scalar() = 7
Same o.Scalar, 7, "a field assigned with empty parentheses"
Fails 450, "x = o.F"
Fails 450, "o.F 1, 2"
Fails 450, "x = o.At"
' Default members
Class WithDefault
    Private m_n
    Public Default Property Get Value : Value = m_n : End Property
    Public Property Let Value(n) : m_n = n : End Property
End Class
Set o = New WithDefault
o.Value = 7
Same o + 1, 8, "a default property in arithmetic"
x = o
Same x, 7, "in an assignment without Set"
Ok o = 7, "in a comparison"
Same "v" & o, "v7", "in a text"
Same CStr(o), "7", "in a conversion"
If o Then x = "true"
Same x, "true", "in a condition"
Same Abs(o), 7, "in a function"
Class Callable
    Public Default Function Run(a, b) : Run = a & "-" & b : End Function
End Class
Set o = New Callable
Same o(1, 2), "1-2", "a default method"
Same o.Run(3, 4), "3-4", "by its name"
Set p = CreateObject("Scripting.Dictionary")
p.Add "o", o
Same p("o")(5, 6), "5-6", "through a collection"
Set o = New Point
Fails 438, "x = o"
Fails 438, "x = o + 1"
Fails 438, "o"
x = 5
Fails 91, "x = Nothing"
Same x, 5, "x = Nothing keeps x"
Fails 424, "Set x = 5"
Fails 424, "x = 5 : x.y = 1"
Fails 424, "x = Empty : z = x.y"
Fails 424, "x = ""t"" : x.Foo"
Fails 91, "Set x = Nothing : x.Foo"
Fails 91, "Set x = Nothing : x.Foo = 1"
Fails 505, "x = .p"
Fails 505, ".p = 1"
Fails 500, "Set x = New NoSuchClass"
Fails 506, "v = 1 : Set x = New v"
Fails 13, "x = Point"
' With
Dim withCount : withCount = 0
Function TheObject
    withCount = withCount + 1
    Set TheObject = o
End Function
With TheObject
    .X = 1
    .Y = 2
    .MoveBy .X, .Y
    Same .X, 2, "members inside With"
    With CreateObject("Scripting.Dictionary")
        .Add "k", 5
        Same .Item("k"), 5, "nested With"
        .Item("k") = 6
        Same .Item("k"), 6, "an indexed property inside With"
    End With
    Same .Y, 4, "after the inner one"
    Ok .X = 2, "an argument that starts with a dot"
End With
Same withCount, 1, "With evaluates its object once"
' Objects inside
Class Node
    Public Value, Link
    Private Sub Class_Initialize : Set Link = Nothing : End Sub
End Class
Dim head, i, n
Set head = Nothing
For i = 1 To 5
    Set n = New Node
    n.Value = i
    Set n.Link = head
    Set head = n
Next
x = ""
Set n = head
Do Until n Is Nothing
    x = x & n.Value
    Set n = n.Link
Loop
Same x, "54321", "a linked list"
Same head.Link.Link.Value, 3, "members of members"
head.Link.Value = "m"
Same head.Link.Value, "m", "assigned through a member"
Same TypeName(Nothing), "Nothing", "TypeName of Nothing"
Class Recursive
    Public Function Fact(n)
        If n < 2 Then Fact = 1 Else Fact = n * Fact(n - 1)
    End Function
End Class
Set o = New Recursive : Same o.Fact(5), 120, "a recursive method of a new object"
Class WithConst
    Public Function Get5 : Get5 = Five : End Function
End Class
Const Five = 5
Set o = New WithConst : Same o.Get5, 5, "globals inside a class"
Class ByRefMethod
    Public Sub Inc(n) : n = n + 1 : End Sub
    Public Property Let P(ByRef i, v) : i = i + v : End Property
End Class
Set o = New ByRefMethod
x = 1
o.Inc x
Same x, 2, "a method changes its argument"
Fails 1041, "Class D1 : Dim a : Dim a : End Class"
