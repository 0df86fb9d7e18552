local sum = 0
for i = 1, 200 do
    for j = 1, 200 do
        for k = 1, 200 do
            sum = (sum + i * j - k) % 100003
        end
    end
end
print(sum)
