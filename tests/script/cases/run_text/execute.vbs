' Execute runs statements, and what they declare stays.
Dim x
Execute "x = 9"
Same x, 9, "Execute"
Execute "Dim made : made = 3"
Same made, 3, "a Dim in Execute"
