#include "diagnostics.h"
#include <cctype>
#include <cstdlib>
#include <cstring>
#include "uiloadplace.h"

namespace uilint {

std::string plainText(const char* text) {
    if (std::strncmp(text, "...", 3) == 0) text += 3;
    std::string out;
    for (const char* p = text; *p; ++p) {
        if (p[0] == '^' && p[1] == 'C') {
            int hex = 0;
            while (hex < 6 && std::isxdigit(static_cast<unsigned char>(p[2 + hex])))
                ++hex;
            p += 1 + hex;
        } else if (p[0] == '^' && p[1] == 'c') {
            ++p;
        } else if (*p != '\f') {
            out += *p;
        }
    }
    return out;
}

void Diagnostics::add(int severity, const std::string& message) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) file = m_topFile.c_str();
    // A message that names its own place in this file ("[menu.txt:4] ...") knows the line better.
    const std::string own = "[" + std::string(file) + ":";
    if (message.compare(0, own.size(), own) == 0) line = std::atoi(message.c_str() + own.size());
    m_all.push_back({file, line, severity, message});
}

void Diagnostics::write(int severity, const char* text) {
    if (severity >= 1) add(severity, plainText(text));
}

} // namespace uilint
