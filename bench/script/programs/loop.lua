local function main()
  local last = 0
  for i = 1, 10000000 do
    last = i
  end
  return last
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
