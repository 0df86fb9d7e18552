local count = 0
local flags = {}
for round = 1, 200 do
    count = 0
    for i = 2, 8190 do flags[i] = true end
    for i = 2, 8190 do
        if flags[i] then
            count = count + 1
            local k = i + i
            while k <= 8190 do
                flags[k] = false
                k = k + i
            end
        end
    end
end
print(count)
