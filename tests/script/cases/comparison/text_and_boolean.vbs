' A text literal beside a Boolean compares with its English word.
Ok "True" = True, "a text literal against True"
Ok Not ("true" = True), "case counts"
Ok Not ("-1" = True), "not as a number"
