-- The loop of engine_benchmark's mixed rows in Lua; prints the time of a line.
local lines, rounds = 10000, 200
local clock = os.clock()
local out, who
for _ = 1, rounds do
    for _ = 1, lines / 5 do
        local name = "Ann, of the mill"
        local age = "7"
        local greeting = "Hello " .. name .. ", you are " .. age
        out = greeting:gsub("[nN]", "_")
        who = name
    end
end
print(string.format("%-24s %33.0f ns a line", _VERSION, (os.clock() - clock) / lines / rounds * 1e9))
