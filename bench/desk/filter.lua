local input, output = {}, {}
for i = 0, 999 do
    input[i] = (i % 17) * 0.25
end
for round = 1, 2000 do
    output[0] = input[0]
    for i = 1, 999 do
        output[i] = output[i - 1] * 0.75 + input[i] * 0.25
    end
end
local sum = 0.0
for i = 0, 999 do
    sum = sum + output[i]
end
print(sum)
