' A known number has its text, any other the common one.
On Error Resume Next
Err.Raise 6
Same Err.Description, "Overflow", "the text of a known number"
Err.Clear
Err.Raise 12345
Same Err.Description, "Unknown runtime error", "the text of an unknown one"
Err.Clear
Err.Raise 0
Ok Err.Number = 5, "Raise 0"
Err.Clear
Err.Raise -2147220991, "src", "negative"
Ok Err.Number = -2147220991, "a negative number"
Err.Clear
Err.Raise vbObjectError + 5, , "no source"
Same Err.Description, "no source", "an argument left out"
