' What is no text does not run, what does not compile fails.
Dim x, y
Fails 13, "Execute 5"
Fails 13, "ExecuteGlobal Empty"
Fails 1002, "y = Eval(""1 + "")"
Fails 1002, "Execute ""x = """
