' A value in words: its type, and its text where it has one. Checks that compare values compare these words.
Function Describe(value)
    If IsArray(value) Then
        Describe = "array"
    ElseIf IsObject(value) Then
        Describe = TypeName(value)
    ElseIf IsNull(value) Then
        Describe = "Null"
    Else
        Describe = TypeName(value) & " '" & value & "'"
    End If
End Function
