local function fib(n)
  if n < 2 then return n end
  return fib(n - 1) + fib(n - 2)
end
local start = os.clock()
local result = fib(30)
print(os.clock() - start, result)
