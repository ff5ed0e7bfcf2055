' Texts compare by code, letter by letter.
Ok "A" < "a", "text compares by code"
Ok "Z" < "a", "by code, not by alphabet"
Ok "abc" < "abd", "letter by letter"
Ok "ab" < "abc", "the shorter is less"
