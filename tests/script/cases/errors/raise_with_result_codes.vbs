' A result code that stands for an error of the language becomes that error.
Fails 70, "Err.Raise &H80070005"
Fails 13, "Err.Raise &H800A000D"
Fails 13, "Err.Raise &H80020005"
Fails 7, "Err.Raise &H8007000E"
Fails 5, "Err.Raise &H80070057"
Fails 438, "Err.Raise &H80020006"
Fails 450, "Err.Raise &H8002000E"
Fails 429, "Err.Raise &H80040154"
Fails 462, "Err.Raise &H800706BA"
Fails 1000, "Err.Raise &H800A03E8"
On Error Resume Next
Err.Raise &H800A000D
Same Err.Number, CLng(13), "Err shows the error's number"
Same Err.Description, "Type mismatch", "and its text"
Err.Clear
Err.Raise &H80041234
Same Err.Number, CLng(&H80041234), "any other code stays as it is"
Err.Clear
Err.Raise vbObjectError + 1000
Same Err.Number, CLng(vbObjectError + 1000), "so does an object's own"
