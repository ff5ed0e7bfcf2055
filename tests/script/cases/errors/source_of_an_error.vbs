' Err.Source names the language where nobody else is named.
On Error Resume Next
x = 1 / 0
Same Err.Source, "Microsoft VBScript runtime error", "an error of the language"
Err.Raise 5
Same Err.Source, "Microsoft VBScript runtime error", "one raised without a source"
Err.Raise 5, "mine"
Same Err.Source, "mine", "one raised with a source"
Execute "x = ("
Same Err.Source, "Microsoft VBScript compilation error", "an error of a text"
