// Timed input events of an off-screen session, read from a plain-text script.
#pragma once
#include <string>
#include <vector>

struct ScriptEvent {
    unsigned int time; // milliseconds from the start
    enum Kind { Move, Down, Up, Key, Char, Png } kind;
    int x = 0, y = 0, key = 0;
};

// Reads the script; false (with a message on stderr) when the file cannot be read or a line is wrong.
bool loadScript(const std::string& path, std::vector<ScriptEvent>& events);
