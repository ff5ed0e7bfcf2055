' The properties of Err can be assigned.
On Error Resume Next
Err.Number = 99
Ok Err.Number = 99, "Number can be assigned"
Err.Description = "d" : Err.Source = "s" : Err.HelpFile = "f" : Err.HelpContext = 3
Same Err.Description & Err.Source & Err.HelpFile & Err.HelpContext, "dsf3", "and the others"
Err.Clear
Same Err.HelpContext & Err.HelpFile & Err.Source, "0", "Clear takes them all"
