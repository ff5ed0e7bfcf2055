' Every control of the overview opens the setup form of its type, and none fails while it is filled: the demo stores
' what the forms themselves write.
' scheme: ../weir.scheme
' window: Overview
' logger: sim:?seed=7
Option Explicit

Dim form, place, opened
opened = 0
For Each form In Array("frmChannel", "frmCmd", "frmCheckBox", "frmStatusLight", "frmValueBar", "frmProgressBar", "frmPicture")
    Host.OnForm form, "CloseAtOnce"
Next
For place = 1 To Window.Controls.Count
    Host.Edit place
Next
Host.Assert opened > 60, "a form each, " & opened & " of them"

Sub CloseAtOnce(form)
    opened = opened + 1
    form.Close
End Sub
