-- Writes down each frame that mpv shows: its time in the file and the moment, both in seconds.
mp.observe_property("time-pos", "number", function(_, position)
    if position then
        print(string.format("frame %.4f %.4f", position, mp.get_time()))
    end
end)
