' Each comparison as the condition of an If.
Dim n
n = 3
If n = 3 Then Ok True, "=" Else Ok False, "="
If n <> 3 Then Ok False, "<>" Else Ok True, "<>"
If n < 4 Then Ok True, "<" Else Ok False, "<"
If n > 4 Then Ok False, ">" Else Ok True, ">"
If n <= 3 Then Ok True, "<=" Else Ok False, "<="
If n >= 4 Then Ok False, ">=" Else Ok True, ">="
If 2.5 < n Then Ok True, "mixed" Else Ok False, "mixed"
If "b" > "a" Then Ok True, "texts" Else Ok False, "texts"
If n = Null Then Ok False, "Null is not true" Else Ok True, "Null is not true"
