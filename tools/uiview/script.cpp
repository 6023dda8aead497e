#include "script.h"
#include <cstdio>
#include <fstream>
#include <sstream>

bool loadScript(const std::string& path, std::vector<ScriptEvent>& events) {
    std::ifstream in(path);
    if (!in) {
        std::fprintf(stderr, "uiview: cannot read script %s\n", path.c_str());
        return false;
    }
    unsigned int now = 0;
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        const size_t hash = line.find('#');
        if (hash != std::string::npos) line.resize(hash);
        std::istringstream words(line);
        std::string verb;
        if (!(words >> verb)) continue;
        ScriptEvent e{now, ScriptEvent::Move};
        bool ok = true;
        if (verb == "move" || verb == "down" || verb == "up") {
            e.kind = verb == "move"   ? ScriptEvent::Move
                     : verb == "down" ? ScriptEvent::Down
                                      : ScriptEvent::Up;
            ok = static_cast<bool>(words >> e.x >> e.y);
        } else if (verb == "key") {
            e.kind = ScriptEvent::Key;
            ok = static_cast<bool>(words >> e.key);
        } else if (verb == "char") {
            std::string text;
            ok = static_cast<bool>(words >> text);
            for (unsigned char c : text)
                events.push_back(ScriptEvent{now, ScriptEvent::Char, 0, 0, c});
            if (ok) continue;
        } else if (verb == "wait") {
            unsigned int ms = 0;
            ok = static_cast<bool>(words >> ms);
            now += ms;
            if (ok) continue;
        } else if (verb == "png") {
            e.kind = ScriptEvent::Png;
        } else {
            ok = false;
        }
        if (!ok) {
            std::fprintf(stderr, "uiview: %s:%d: cannot read \"%s\"\n", path.c_str(), number, line.c_str());
            return false;
        }
        events.push_back(e);
    }
    return true;
}

ScriptPlayer::ScriptPlayer(const std::vector<ScriptEvent>& events) : m_events(events) {
    for (const ScriptEvent& e : events)
        m_marked |= e.kind == ScriptEvent::Png;
}

std::string framePath(const std::string& pattern, int frame) {
    char path[1024];
    std::snprintf(path, sizeof path, pattern.c_str(), frame);
    return path;
}
