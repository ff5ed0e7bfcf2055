local Counter = {}
Counter.__index = Counter
function Counter.new() return setmetatable({ total = 0 }, Counter) end
function Counter:add(amount) self.total = self.total + amount end
local function main()
  local c = Counter.new()
  for i = 1, 300000 do
    c:add(i & 7)
  end
  return c.total
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
