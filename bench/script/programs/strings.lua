local function split(s)
  local parts = {}
  for word in s:gmatch("%S+") do parts[#parts + 1] = word end
  return parts
end
local function main()
  local s = "the quick brown fox jumps over the lazy dog"
  local n = 0
  for i = 1, 100000 do
    n = n + s:find("lazy", 1, true)
    n = n + #s:sub(5, 9):upper()
    n = n + #(s:gsub("fox", "panel"))
    if s:sub(1, 3) == "the" then n = n + 1 end
    n = n + #split(s) - 1
  end
  return n
end
local start = os.clock()
local result = main()
print(os.clock() - start, result)
