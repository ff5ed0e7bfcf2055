' An object is numeric when its default value is.
Class WithDefault
    Public Content
    Public Default Property Get Value
        Value = Content
    End Property
End Class
Class Bare
End Class
Class Failing
    Public Default Property Get Value
        Err.Raise 1000
    End Property
End Class
Dim o
Set o = New WithDefault
o.Content = 5
Ok IsNumeric(o), "a number"
o.Content = "12"
Ok IsNumeric(o), "a text that is one"
o.Content = "abc"
Ok Not IsNumeric(o), "any other text"
o.Content = Null
Ok Not IsNumeric(o), "Null"
Ok Not IsNumeric(New Bare), "no default"
Ok Not IsNumeric(New Failing), "a default that fails"
Ok Not IsNumeric(Nothing), "Nothing"
Ok IsNumeric(Err), "an object of the language"
