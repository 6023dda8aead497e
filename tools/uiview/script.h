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

// Hands a script's events to the frames they are due in, and says which frames to save: every frame of a
// script without png lines, else the frames its png lines mark. A png line pictures the events before it:
// later events of the same time wait for the next frame.
class ScriptPlayer {
public:
    explicit ScriptPlayer(const std::vector<ScriptEvent>& events);
    // Sends the events due by `now` to send(event); true when this frame is to be saved.
    template <class Send> bool due(unsigned int now, Send send) {
        bool save = !m_marked;
        for (; m_next < m_events.size() && m_events[m_next].time <= now && !(save && m_marked); ++m_next) {
            save |= m_events[m_next].kind == ScriptEvent::Png;
            send(m_events[m_next]);
        }
        return save;
    }

private:
    const std::vector<ScriptEvent>& m_events;
    size_t m_next = 0;
    bool m_marked = false;
};

// The file name of a frame: the printf pattern with the frame number.
std::string framePath(const std::string& pattern, int frame);
