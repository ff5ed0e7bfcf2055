local store = { level = 0 }
local gauge = setmetatable({}, {
  __index = function(_, name) return store[name] end,
  __newindex = function(_, name, value) store[name] = value end,
})
local function main()
  for i = 1, 1000000 do
    gauge.level = gauge.level + 1
  end
  return gauge.level
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
