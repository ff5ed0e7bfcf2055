' Numbers compare by value, whatever their kind; dates by time.
Ok 1 = 1.0, "types do not matter for numbers"
Ok CByte(5) = 5, "byte"
Ok CCur(5) = CSng(5), "currency and single"
Ok #1/1/2026# < #1/2/2026#, "dates"
