Dim d, k, r, m, x
Set d = CreateObject("Scripting.Dictionary")
Same TypeName(d), "Dictionary", "TypeName"
d.Add "a", 1
d.Add "b", "two"
d.Add 3, 3.5
Same d.Count, CLng(3), "Count"
Same d("a"), 1, "the default member"
Same d.Item("b"), "two", "Item"
Same d(3), 3.5, "a number as key"
Same d(3.0), 3.5, "equal numbers are one key"
Ok d.Exists("a"), "Exists"
Ok Not d.Exists("A"), "keys know case"
Ok Not d.Exists("3"), "a text is no number"
d("a") = 10
Same d("a"), 10, "assigning an item"
d("new") = 5
Same d.Count, CLng(4), "assigning a new key adds it"
x = d("missing")
Ok IsEmpty(x), "reading a missing key gives Empty"
Ok d.Exists("missing"), "and adds it"
d.Remove "missing"
Ok Not d.Exists("missing"), "Remove"
Fails 32811, "d.Remove ""nope"""
Fails 457, "d.Add ""a"", 2"
d.Key("b") = "B"
Ok d.Exists("B") And Not d.Exists("b"), "Key renames"
Fails 32811, "d.Key(""nope"") = 1"
k = d.Keys
Same k(0) & "," & k(1) & "," & k(2) & "," & k(3), "a,B,3,new", "Keys, in order"
k = d.Items
Same k(0) & "," & k(1), "10,two", "Items"
Same d.Keys()(0), "a", "an index after Keys()"
Same d.Items(1), "two", "or right after Items"
Set d("obj") = d
Ok d("obj") Is d, "an object as item"
d.Remove "obj"
x = ""
For Each k In d
    x = x & k & ";"
Next
Same x, "a;B;3;new;", "For Each walks the keys"
d.RemoveAll
Same d.Count, CLng(0), "RemoveAll"
d.CompareMode = vbTextCompare
d("Key") = 1
Ok d.Exists("KEY"), "CompareMode"
Fails 5, "d.CompareMode = 0"
Dim keyObject : Set keyObject = CreateObject("scripting.dictionary")
d.Add keyObject, "by object"
Same d(keyObject), "by object", "an object as key"
Fails 5, "d.Add Array(1), 1"
Fails 438, "d.NoSuchMember"
Fails 450, "d.Add 1"
Fails 450, "x = d.Exists"
For k = 1 To 200 : d(k) = k * 2 : Next
For k = 1 To 200 Step 2 : d.Remove k : Next
Same d(100), 200, "after many removals"
Same d.Count, CLng(102), "the count is right"
For Each x In Array("WScript.Shell", "Scripting.FileSystemObject", "MSXML2.XMLHTTP", "ADODB.Stream", "", "x")
    Fails 429, "Set y = CreateObject(""" & x & """)"
Next
Fails 429, "Set y = GetObject(""winmgmts:"")"
Fails 429, "Set y = LoadPicture(""a.bmp"")"
' RegExp
Set r = New RegExp
r.Pattern = "(\w+)@(\w+)\.com"
Ok r.Test("me@example.com"), "Test"
Ok Not r.Test("nobody"), "Test that fails"
Set m = r.Execute("a@b.com c@d.com")
Same m.Count, CLng(1), "one match unless Global"
r.Global = True
Set m = r.Execute("a@b.com c@d.com")
Same m.Count, CLng(2), "Global"
Same m(1).Value, "c@d.com", "Value"
Same "" & m(1), "c@d.com", "the default of a match"
Same m.Item(0).FirstIndex, CLng(0), "FirstIndex"
Same m(1).FirstIndex, CLng(8), "of the second"
Same m(0).Length, CLng(7), "Length"
Same m(0).SubMatches(0) & m(0).SubMatches(1), "ab", "SubMatches"
Same m(0).SubMatches.Count, CLng(2), "their count"
x = ""
For Each k In m
    x = x & k.Value & ";"
Next
Same x, "a@b.com;c@d.com;", "For Each over matches"
Same r.Replace("a@b.com c@d.com", "$2 at $1"), "b at a d at c", "Replace with groups"
r.Pattern = "b"
Same r.Replace("abcb", "[$&]"), "a[b]c[b]", "$&"
Same r.Replace("abcb", "$$"), "a$c$", "$$"
Same r.Replace("xbx", "$`"), "xxx", "$`"
Same r.Replace("abc", "$'"), "acc", "$'"
r.Global = False
Same r.Replace("abcb", "-"), "a-cb", "only the first"
r.Pattern = "B"
Ok Not r.Test("abc"), "case matters"
r.IgnoreCase = True
Ok r.Test("abc"), "IgnoreCase"
r.Pattern = "^b$"
Ok Not r.Test("a" & vbLf & "b" & vbLf & "c"), "one line"
r.MultiLine = True
Ok r.Test("a" & vbLf & "b" & vbLf & "c"), "MultiLine"
Same r.Pattern, "^b$", "Pattern"
Ok r.IgnoreCase And r.MultiLine And Not r.Global, "the flags can be read"
r.Pattern = ""
Ok r.Test("anything"), "an empty pattern fits"
r.Pattern = "(a)|(b)"
Set m = r.Execute("b")
Ok IsEmpty(m(0).SubMatches(0)), "a group that took no part is Empty"
Same m(0).SubMatches(1), "b", "the other one"
r.Pattern = "("
Fails 5020, "x = r.Test(""a"")"
r.Pattern = "["
Fails 5019, "x = r.Test(""a"")"
r.Pattern = "*a"
Fails 5018, "x = r.Test(""a"")"
r.Pattern = "[z-a]"
Fails 5021, "x = r.Test(""a"")"
r.Pattern = "\"
Fails 5017, "x = r.Test(""a"")"
Fails 5, "x = m(5)"
r.Pattern = "(a+)+$"
x = r.Test(String(40, "a") & "b")
Ok True, "a hostile pattern comes to an end"
' Boxes without a host are answered
Same MsgBox("text"), 1, "MsgBox"
Ok IsEmpty(InputBox("prompt")), "InputBox"
Same vbOKOnly & vbOKCancel & vbAbortRetryIgnore & vbYesNoCancel & vbYesNo & vbRetryCancel, "012345", "button constants"
Same vbCritical & vbQuestion & vbExclamation & vbInformation, "16324864", "icon constants"
Same vbOK & vbCancel & vbAbort & vbRetry & vbIgnore & vbYes & vbNo, "1234567", "answer constants"
Same vbDefaultButton2 & vbDefaultButton3 & vbSystemModal, "2565124096", "more of them"
Same vbSunday & vbMonday & vbTuesday & vbWednesday & vbThursday & vbFriday & vbSaturday, "1234567", "weekday constants"
Same vbGeneralDate & vbLongDate & vbShortDate & vbLongTime & vbShortTime, "01234", "date format constants"
Same vbUseSystem & vbFirstJan1 & vbFirstFourDays & vbFirstFullWeek, "0123", "week constants"
Same vbBinaryCompare & vbTextCompare, "01", "compare constants"
Same vbTrue & vbFalse & vbUseDefault, "-10-2", "three states"
Same vbBlack & "," & vbRed & "," & vbGreen & "," & vbBlue, "0,255,65280,16711680", "colours"
Same vbYellow & "," & vbMagenta & "," & vbCyan & "," & vbWhite, "65535,16711935,16776960,16777215", "more colours"
Same vbObjectError, CLng(-2147221504), "vbObjectError"
