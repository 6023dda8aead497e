#include "colourlog.h"
#include <cctype>
#include <cstdio>
#include <string>

namespace {

int hexByte(const char* s) {
    auto digit = [](char c) {
        return std::isdigit(static_cast<unsigned char>(c)) ? c - '0' : (c | 0x20) - 'a' + 10;
    };
    return digit(s[0]) * 16 + digit(s[1]);
}

bool isHex6(const char* s) {
    for (int i = 0; i < 6; ++i)
        if (!std::isxdigit(static_cast<unsigned char>(s[i]))) return false;
    return true;
}

} // namespace

void ColourLog::write(int severity, const char* text) {
    static const char* const kTags[] = {"", "warning: ", "error: "};
    const int level = severity >= Logger::kError ? 2 : severity == Logger::kWarning ? 1 : 0;
    static const char* const kColours[] = {"", "\x1b[1;33m", "\x1b[1;31m"};
    std::string out = m_colours ? kColours[level] : "";
    out += kTags[level];
    if (m_colours && level > 0) out += "\x1b[0m";
    for (const char* p = text; *p; ++p) {
        if (p[0] == '^' && p[1] == 'C' && isHex6(p + 2)) {
            if (m_colours) {
                char code[32];
                std::snprintf(code, sizeof code, "\x1b[38;2;%d;%d;%dm", hexByte(p + 2), hexByte(p + 4),
                              hexByte(p + 6));
                out += code;
            }
            p += 7;
        } else if (p[0] == '^' && p[1] == 'c') {
            if (m_colours) out += "\x1b[0m";
            ++p;
        } else if (*p == '\f') {
            out += '\n';
        } else {
            out += *p;
        }
    }
    if (out.empty() || out.back() != '\n') out += '\n';
    std::fputs(out.c_str(), stderr);
}
