' Boxes without a host are answered.
Same MsgBox("text"), 1, "MsgBox"
Ok IsEmpty(InputBox("prompt")), "InputBox"
