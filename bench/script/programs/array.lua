local function main()
  local a = {}
  for i = 0, 999999 do
    a[i] = i * 2
  end
  local sum = 0
  for i = 0, #a do
    sum = sum + a[i]
  end
  return sum
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
