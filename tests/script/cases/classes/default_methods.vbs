' A default method is called through the object.
Dim o, p
Class Callable
    Public Default Function Run(a, b) : Run = a & "-" & b : End Function
End Class
Set o = New Callable
Same o(1, 2), "1-2", "a default method"
Same o.Run(3, 4), "3-4", "by its name"
Set p = CreateObject("Scripting.Dictionary")
p.Add "o", o
Same p("o")(5, 6), "5-6", "through a collection"
