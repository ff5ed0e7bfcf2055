' Err holds the last error until it is cleared.
Dim x
x = "kept"
On Error Resume Next
x = 1 / 0
Ok Err.Number = 11, "Err.Number"
Same Err.Description, "Division by zero", "Err.Description"
Same x, "kept", "the failed assignment did nothing"
Ok Err = 11, "Number is the default"
Err.Clear
Ok Err.Number = 0, "Clear"
Same Err.Description, "", "clears the text"
x = CLng("abc")
Ok Err.Number = 13, "another"
On Error Resume Next
Ok Err.Number = 0, "On Error Resume Next clears"
x = 1 / 0
On Error GoTo 0
Ok Err.Number = 0, "On Error GoTo 0 clears"
