local function step(value, limit)
    local result
    if value > limit then
        result = value - limit
    else
        result = value + 7
    end
    return result
end
local x = 0
for i = 1, 3000000 do
    x = step(x, 1000)
end
print(x)
