' Empty equals an empty text, 0, False and itself.
Ok "" = Empty, "Empty equals an empty text"
Ok 0 = Empty, "Empty equals 0"
Ok False = Empty, "Empty equals False"
Ok Empty = Empty, "Empty equals Empty"
