' The constants that are texts.
Same Len(vbCrLf), CLng(2), "vbCrLf"
Same Asc(vbCr) & "," & Asc(vbLf) & "," & Asc(vbTab), "13,10,9", "vbCr, vbLf, vbTab"
Same vbNewLine, vbCrLf, "vbNewLine"
Same AscW(vbNullChar), 0, "vbNullChar"
Same vbNullString, "", "vbNullString"
Same Asc(vbBack) & "," & Asc(vbFormFeed) & "," & Asc(vbVerticalTab), "8,12,11", "the rest"
