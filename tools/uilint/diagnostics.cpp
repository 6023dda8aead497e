#include "diagnostics.h"
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <utility>
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
    if (!uiLoadPlace(&file, &line)) {
        bool placed = false;
        for (const PathKey& key : m_pathKeys) {
            const std::string tail = ": " + key.path;
            if (message.size() >= tail.size() &&
                message.compare(message.size() - tail.size(), tail.size(), tail) == 0) {
                keep({key.file, key.line, severity, message});
                placed = true;
            }
        }
        if (!placed) keep({m_topFile, 0, severity, message});
        return;
    }
    // A message that names its own place in this file ("[menu.txt:4] ...") knows the line better.
    const std::string own = "[" + std::string(file) + ":";
    if (message.compare(0, own.size(), own) == 0) line = std::atoi(message.c_str() + own.size());
    keep({file, line, severity, message});
}

void Diagnostics::addAt(const std::string& file, int line, int severity, const std::string& message) {
    keep({file, line, severity, message});
}

void Diagnostics::pathNamed(const std::string& path, const std::string& file, int line) {
    m_pathKeys.push_back({path, file, line});
}

void Diagnostics::keep(Diagnostic d) {
    for (const Diagnostic& e : m_all)
        if (e.file == d.file && e.line == d.line && e.severity == d.severity && e.message == d.message)
            return;
    m_all.push_back(std::move(d));
}

void Diagnostics::write(int severity, const char* text) {
    if (severity >= 1) add(severity, plainText(text));
}

} // namespace uilint
