' The help that Err.Raise is given is kept, and forgotten with the error.
On Error Resume Next
Err.Raise 1000, "src", "text", "help.hlp", 7
Same Err.HelpFile, "help.hlp", "the file"
Same Err.HelpContext, CLng(7), "the place in it"
Same Err.Source & Err.Description, "srctext", "with source and text"
Err.Raise 1001
Same Err.HelpFile, "", "the next error has none"
Same Err.HelpContext, CLng(0), "and no place"
Sub Thrower
    Err.Raise 1002, , , "far.hlp", 9
End Sub
Thrower
Same Err.HelpFile & Err.HelpContext, "far.hlp9", "it comes through a procedure"
Err.Clear
Same Err.HelpFile & Err.HelpContext, "0", "Clear forgets it"
