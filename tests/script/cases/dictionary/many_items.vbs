' After many removals everything is still found.
Dim d, k
Set d = CreateObject("Scripting.Dictionary")
d("a") = 1 : d("b") = 2
For k = 1 To 200 : d(k) = k * 2 : Next
For k = 1 To 200 Step 2 : d.Remove k : Next
Same d(100), 200, "after many removals"
Same d.Count, CLng(102), "the count is right"
