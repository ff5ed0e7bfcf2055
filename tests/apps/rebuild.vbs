' Builds the panel that is shown anew in an empty window, as a user does: by the two right-click menus, the keys that
' move and size, and the setup forms. What neither can give a control (see PatternOf) comes along with a control that
' is copied in the first window and pasted into the new one.
Option Explicit

Const TabKey = 9, LeftKey = 37, UpKey = 38, RightKey = 39, DownKey = 40, CKey = 67
Const Shift = 1, Ctrl = 2
Const CoarseGrid = 300, Pixel = 15

Dim wanted ' the text of each control that is to be built
Dim patterns ' what is pasted, by what it brings along
Dim xml ' the control that is being made
Dim backColour, foreColour, fontName, fontSize, grid, snap, formGrid
Dim form
For Each form In Array("frmChannel", "frmCmd", "frmCheckBox", "frmStatusLight", "frmValueBar", "frmProgressBar", _
                       "frmPicture", "frmBenchProp")
    Host.OnForm form, "Fill_" & form
Next

Rebuild

Sub Rebuild
    LookAt
    Window.LoadWindow "New"
    Host.Assert Window.Controls.Count = 0, "it begins with an empty window"
    Window.LockPositions = False
    Window.KeyboardEditing = True
    formGrid = CoarseGrid
    Host.WindowProperties
    Dim place
    For place = 0 To UBound(wanted)
        Make wanted(place)
    Next
    formGrid = grid
    Host.WindowProperties
    Window.LockPositions = True
    Window.SaveWindow
End Sub

' What is to be built, and the controls that are copied.
Sub LookAt()
    Dim place, name
    ReDim wanted(Window.Controls.Count - 1)
    Set patterns = CreateObject("Scripting.Dictionary")
    backColour = Window.BackColor
    foreColour = Window.ForeColor
    fontName = Window.Font.Name
    fontSize = Window.Font.Size
    grid = Window.GridSize
    snap = Window.SnapToGrid
    Window.LockPositions = False
    Window.KeyboardEditing = True
    For place = 1 To Window.Controls.Count
        wanted(place - 1) = Host.Node(place)
        Host.Key TabKey
        name = PatternOf(wanted(place - 1))
        If name <> "" Then
            If Not patterns.Exists(name) Then
                Host.Key CKey, Ctrl
                Host.Assert Value(Host.Clipboard, "KEY") = Value(wanted(place - 1), "KEY"), "the copied one is meant"
                patterns.Add name, Host.Clipboard
            End If
        End If
    Next
    Window.LockPositions = True
End Sub

' Text of an element, "" for none. The first of its name is the control's own.
Function Value(text, name)
    Dim first, last
    Value = ""
    first = InStr(text, "<" & name & ">")
    If first = 0 Then Exit Function
    first = first + Len(name) + 2
    last = InStr(first, text, "</" & name & ">")
    Value = Replace(Replace(Replace(Mid(text, first, last - first), "&lt;", "<"), "&gt;", ">"), "&amp;", "&")
End Function

' Only what a control's own children say; FONT and ACTION have children of such names, too.
Function Own(ByVal text, name)
    Dim part
    For Each part In Array("FONT", "ACTION")
        text = Replace(text, Value(text, part), "")
    Next
    Own = Value(text, name)
End Function

' What a control has that neither form nor menu can give it; "" for nothing of the kind.
Function PatternOf(ByVal text)
    Dim names, name, result
    result = Value(text, "TYPE")
    Select Case result
    Case "VB.Label", "VB.TextBox"
        names = Array("ALIGNMENT", "BACKSTYLE", "BORDERSTYLE", "APPEARANCE")
    Case "VB.Shape"
        names = Array("BACKCOLOR", "BACKSTYLE", "BORDERCOLOR", "BORDERSTYLE", "SHAPE")
    Case "VB.OptionButton"
        names = Array("CAPTION", "BACKCOLOR", "FORECOLOR", "VALUE", "FONT")
    Case "VB.CheckBox"
        names = Array("CAPTION", "BACKCOLOR", "FORECOLOR")
    Case "MSComctlLib.ProgressBar"
        names = Array("APPEARANCE", "BORDERSTYLE")
    Case "ZanBenchWindow.ValueBar"
        names = Array("BACKCOLOR", "SHOWSCALE", "TICKCOUNT", "FONT")
    Case Else
        PatternOf = ""
        Exit Function
    End Select
    For Each name In names
        If name = "FONT" Then
            result = result & "|" & Value(text, name)
        Else
            result = result & "|" & Own(text, name)
        End If
    Next
    PatternOf = result
End Function

Function Entry(menu, caption)
    Dim place
    For place = 1 To menu.Count
        If menu.Item(place).Caption = caption Then Set Entry = menu.Item(place)
    Next
End Function

Sub Make(text)
    Dim name, place
    xml = text
    name = PatternOf(text)
    Host.Press 60, 6000, 2 ' in the margin, which no shape reaches
    If name = "" Then
        Entry(Entry(Host.Menu, "&Add").Menu, CaptionOf(Value(text, "TYPE"))).Choose
    Else
        Host.Clipboard = patterns(name)
        Entry(Host.Menu, "&Paste").Choose
    End If
    place = Window.Controls.Count
    Host.Key TabKey, Shift ' the last one is the current one then
    PutInPlace Window.Controls(place)
    Host.Edit place
End Sub

Function CaptionOf(kind)
    Select Case kind
    Case "VB.CommandButton": CaptionOf = "&Command Button"
    Case "VB.Picture": CaptionOf = "&Picture"
    Case "ZanBenchWindow.StatusLight": CaptionOf = "S&tatus Light"
    End Select
End Function

Sub PutInPlace(made)
    Go CLng(Value(xml, "LEFT")) - made.Left, LeftKey, RightKey, 0
    Go CLng(Value(xml, "TOP")) - made.Top, UpKey, DownKey, 0
    Go CLng(Value(xml, "WIDTH")) - made.Width, LeftKey, RightKey, Ctrl
    Go CLng(Value(xml, "HEIGHT")) - made.Height, UpKey, DownKey, Ctrl
    Host.Assert made.Left = CLng(Value(xml, "LEFT")) And made.Top = CLng(Value(xml, "TOP")), "its place"
    Host.Assert made.Width = CLng(Value(xml, "WIDTH")) And made.Height = CLng(Value(xml, "HEIGHT")), "its size"
End Sub

Sub Go(by, back, forth, held)
    Dim arrow
    arrow = forth
    If by < 0 Then arrow = back
    Host.Key arrow, held, Abs(by) \ CoarseGrid
    Host.Key arrow, held + Shift, (Abs(by) Mod CoarseGrid) \ Pixel
End Sub

' Forms ----------------------------------------------------------------------------------------------------------

Sub Choose(field, text)
    Dim row
    For row = 0 To field.ListCount - 1
        If field.List(row) = text Or Left(field.List(row), Len(text) + 1) = text & vbTab Then
            field.ListIndex = row
            Exit Sub
        End If
    Next
    Host.Assert False, field.Name & " has no row " & text
End Sub

' The row of the channel in a list of every channel: label and window.
Sub ChooseChannel(field, bound)
    Dim row, parts
    If bound = "" Then
        field.ListIndex = 0
        Exit Sub
    End If
    parts = Split(bound, "|")
    For row = 0 To field.ListCount - 1
        If field.List(row) = Scheme.Windows(parts(0)).Item(parts(1)).Label & vbTab & parts(0) Then
            field.ListIndex = row
            Exit Sub
        End If
    Next
    Host.Assert False, "no row for " & bound
End Sub

Sub PickFont(form)
    Dim font, answer
    font = Value(xml, "FONT")
    answer = "font:" & Value(font, "NAME") & "," & Value(font, "SIZE")
    If Value(font, "BOLD") = "-1" Then answer = answer & ",bold"
    Host.Answer answer
    form.Field("cmdFont").Click
End Sub

Sub PickColour(field, colour)
    Host.Answer "colour:" & colour
    If Left(field.Name, 3) = "cmd" Then field.Click Else field.DoubleClick
End Sub

Sub Tick(field, isOn)
    If (field.Value = 1) <> isOn Then field.Click
End Sub

Sub Fill_frmBenchProp(form)
    PickColour form.Field("cmdForeCol"), foreColour
    PickColour form.Field("cmdBackCol"), backColour
    Host.Answer "font:" & fontName & "," & fontSize
    form.Field("cmdFont").Click
    form.Tab = 1
    Tick form.Field("cbSnap"), snap
    form.Field("txtGrid").Text = CStr(formGrid)
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmChannel(form)
    Dim bound, parts, place
    bound = Own(xml, "BINDTO")
    If bound = "" Then
        form.Field("cboBind").ListIndex = 0
        form.Field("txtCaption").Text = Own(xml, "CAPTION")
    Else
        parts = Split(bound, "|")
        Choose form.Field("cboBind"), parts(0)
        For place = 1 To Scheme.Windows(parts(0)).Count
            If Scheme.Windows(parts(0)).Item(place).Key = parts(1) Then
                ' The row's own channel is bound, the fields beside the list show the one after it: the last row has
                ' none to show, and the host is told so.
                If place = Scheme.Windows(parts(0)).Count Then Host.Echo "last channel"
                form.Field("lboChannels").ListIndex = place - 1
            End If
        Next
    End If
    form.Tab = 1
    form.Field("txtTooltip").Text = Own(xml, "TOOLTIPTEXT")
    PickFont form
    PickColour form.Field("cmdForeCol"), Own(xml, "FORECOLOR")
    If Own(xml, "BACKCOLOR") <> "" Then PickColour form.Field("cmdBackCol"), Own(xml, "BACKCOLOR")
    Tick form.Field("cbShowLabels"), Own(xml, "SHOWLABELS") <> "" And Own(xml, "SHOWLABELS") <> "0"
    Tick form.Field("cbAddSeperator"), Own(xml, "ADDLABELSEPERATORS") <> "" And Own(xml, "ADDLABELSEPERATORS") <> "0"
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmCmd(form)
    Dim action
    action = Value(xml, "ACTION")
    Select Case Value(action, "TYPE")
    Case "SET"
        form.Field("cboActions").ListIndex = 0
        ChooseChannel form.Field("lvChannels"), Own(xml, "BINDTO")
    Case "PUT"
        form.Field("cboActions").ListIndex = 1
        form.Field("txtValue").Text = Value(action, "PUTVALUE")
        form.Field("txtAddress").Text = Value(action, "PUTADDRESS")
        form.Field("cboDataType").ListIndex = CLng(Value(action, "PUTDATATYPE"))
    Case "VESPER"
        form.Field("cboActions").ListIndex = 2
        Choose form.Field("cboFunction"), Left(Value(action, "FUNCTION"), 1) & LCase(Mid(Value(action, "FUNCTION"), 2))
        Tick form.Field("cbShowProgress"), Value(action, "SHOWPROGRESS") = "1"
    Case "SCRIPT"
        form.Field("cboActions").ListIndex = 3
        form.Field("txtScript").Text = Replace(Replace(Value(action, "SCRIPT"), "\n", vbCrLf), "\t", vbTab)
    End Select
    Tick form.Field("cbHide"), Own(xml, "HIDEWHENPROTECTED") = "1"
    form.Tab = 1
    form.Field("txtCaption").Text = Own(xml, "CAPTION")
    form.Field("txtTooltip").Text = Own(xml, "TOOLTIPTEXT")
    PickFont form
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmCheckBox(form)
    Dim action
    action = Value(xml, "ACTION")
    ChooseChannel form.Field("lvChannels"), Own(xml, "BINDTO")
    form.Field("txtCheckedValue").Text = Value(action, "CHECKEDVALUE")
    form.Field("txtCheckedCaption").Text = Value(action, "CHECKEDCAPTION")
    form.Field("txtUncheckedValue").Text = Value(action, "UNCHECKEDVALUE")
    form.Field("txtUncheckedCaption").Text = Value(action, "UNCHECKEDCAPTION")
    form.Tab = 1
    form.Field("txtTooltip").Text = Own(xml, "TOOLTIPTEXT")
    PickFont form
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmStatusLight(form)
    If Own(xml, "MODE") = "PROGRAM" Then
        form.Field("obProgram").Click
        If Own(xml, "PROGRAM") = "DATASTATUS" Then form.Field("obDataStat").Click Else form.Field("obConStat").Click
    Else
        ChooseChannel form.Field("lvChannels"), Own(xml, "BINDTO")
        Choose form.Field("cboComparison"), Own(xml, "COMPARISON")
        form.Field("txtValue").Text = Own(xml, "COMPAREVALUE")
        If Own(xml, "PROGRAM") = "DATASTATUS" Then
            form.Field("obProgram").Click
            form.Field("obDataStat").Click
            form.Field("obChannel").Click
        End If
    End If
    form.Field("txtTRUECaption").Text = Own(xml, "TRUECAPTION")
    form.Field("txtFALSECaption").Text = Own(xml, "FALSECAPTION")
    PickColour form.Field("picTRUEColour"), Own(xml, "TRUECOLOUR")
    PickColour form.Field("picFALSEColour"), Own(xml, "FALSECOLOUR")
    Tick form.Field("cbFlash"), Own(xml, "FLASH") = "-1"
    form.Tab = 1
    form.Field("txtTooltip").Text = Own(xml, "TOOLTIPTEXT")
    PickFont form
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmValueBar(form)
    ChooseChannel form.Field("lvChannels"), Own(xml, "BINDTO")
    form.Field("obFixed").Click
    form.Field("txtMin").Text = Own(xml, "MIN")
    form.Field("txtMax").Text = Own(xml, "MAX")
    form.Field("txtLow").Text = Own(xml, "LOWLIMIT")
    form.Field("txtHigh").Text = Own(xml, "HIGHLIMIT")
    PickColour form.Field("picLow"), Own(xml, "LOWCOLOUR")
    PickColour form.Field("picHigh"), Own(xml, "HIGHCOLOUR")
    PickColour form.Field("picNormal"), Own(xml, "NORMALCOLOUR")
    Tick form.Field("cbFlash"), Own(xml, "FLASH") = "-1"
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmProgressBar(form)
    ChooseChannel form.Field("lvChannels"), Own(xml, "BINDTO")
    form.Field("txtMin").Text = "0"
    form.Field("txtMax").Text = Own(xml, "MAX")
    If Own(xml, "ORIENTATION") = "1" Then form.Field("obVertical").Click Else form.Field("obHorizontal").Click
    If Own(xml, "SCROLLING") = "1" Then form.Field("obSmooth").Click Else form.Field("obStandard").Click
    form.Field("cmdOK").Click
End Sub

Sub Fill_frmPicture(form)
    Host.Answer "file:" & Own(xml, "PICTUREFILE")
    form.Field("cmdBrowse").Click
    form.Field("cmdOK").Click
End Sub
