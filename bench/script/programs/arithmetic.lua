local function main()
  local x, y = 0.5, 0
  for i = 1, 1000000 do
    x = x * 1.000001 + i / 3 - y
    y = y + i - 7
    if y > 1000000 then y = y - 1000000 end
  end
  return y
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
