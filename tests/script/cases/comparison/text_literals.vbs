' Beside a number that is no literal a text literal compares as text.
Dim n
Ok Not ("010" = CInt(10)), "a text literal against a function's result compares text"
n = 10
Ok Not ("010" = n), "a text literal against a variable compares text"
Ok "10" = n, "and is equal as text"
Const Ten = 10
Ok Not ("010" = Ten), "a Const is no literal"
Ok Not ("-05" = -5), "a negated literal is no literal"
Ok "-5" = -5, "a negated literal compares as text"
Ok Not ("05" = 5 + 0), "a sum is no literal"
