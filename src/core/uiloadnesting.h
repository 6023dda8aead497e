// Guards of description and scriptlet loading against files that would never finish.
//
// Every thread that loads keeps a stack of what it is reading: the files (descriptions and scriptlets)
// and the object blocks inside them. A file that is already on the stack is an include cycle and is
// refused; a stack deeper than kMaxNesting levels is refused too, so no file can exhaust the thread's
// stack. Refusals are logged with the file and line that asked for the level.
#pragma once

class Parser;

namespace ui {

constexpr int kMaxNesting = 256;
constexpr unsigned int kMaxTextFileBytes = 16u * 1024u * 1024u; // descriptions and scriptlets

class NestingLevel {
public:
    enum Kind { File, Object };

    // Enters one level for the file or object `name`; entered() tells whether it was allowed.
    NestingLevel(Kind kind, const char* name);
    ~NestingLevel();
    NestingLevel(const NestingLevel&) = delete;
    NestingLevel& operator=(const NestingLevel&) = delete;

    bool entered() const { return m_entered; }

    // The parser reading the innermost file, for the line numbers of refusal messages.
    static void setParser(const Parser* parser);

private:
    bool m_entered = false;
};

} // namespace ui
