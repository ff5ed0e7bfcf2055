' What the case files say their expectations with.
Sub Ok(condition, text)
    If IsNull(condition) Then
        Checks.Note False, text & " (Null)"
    Else
        Checks.Note CBool(condition), text
    End If
End Sub
Function Describe(value)
    If IsArray(value) Then
        Describe = "array"
    ElseIf IsObject(value) Then
        Describe = TypeName(value)
    ElseIf IsNull(value) Then
        Describe = "Null"
    Else
        Describe = TypeName(value) & " " & value
    End If
End Function
' Same type and same text.
Sub Same(actual, expected, text)
    Checks.Note Describe(actual) = Describe(expected), text & ": is " & Describe(actual) & ", expected " & Describe(expected)
End Sub
' A statement run on its own fails with this number.
Sub Fails(number, code)
    On Error Resume Next
    ExecuteGlobal code
    Dim got
    got = Err.Number
    On Error GoTo 0
    Checks.Note got = number, code & " raised " & got & ", expected " & number
End Sub
' An expression gives this type and text.
Sub Gives(expression, kind, shown)
    Dim got
    On Error Resume Next
    got = Eval(expression)
    If Err.Number <> 0 Then
        Checks.Note False, expression & " raised " & Err.Number & " " & Err.Description
    ElseIf IsNull(got) Then
        Checks.Note kind = "Null", expression & " is Null, expected " & kind
    Else
        Dim text
        text = CStr(got)
        Checks.Note TypeName(got) = kind And text = shown, expression & " is " & TypeName(got) & " '" & text & "', expected " & kind & " '" & shown & "'"
    End If
End Sub
