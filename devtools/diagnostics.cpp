#include "diagnostics.h"
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <utility>
#include "uiloadplace.h"

namespace devtools {

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

std::string diagnosticLine(const Diagnostic& d) {
    const char* what = d.severity >= Logger::kError ? "error" : "warning";
    const std::string at = d.line > 0 ? d.file + ":" + std::to_string(d.line) : d.file;
    return at + ": " + what + ": " + d.message;
}

void Diagnostics::add(int severity, const std::string& message) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line)) {
        if (keepAtValues(m_paths, severity, message, false)) return;
        if (!m_wakingValues) return keep({m_topFile, 0, severity, message});
        if (keepAtValues(*m_wakingValues, severity, message, true)) return;
        return keep({m_wakingHeader.file, m_wakingHeader.line, severity, message});
    }
    // A message that names its own place in this file ("[menu.txt:4] ...") knows the line better.
    const std::string own = "[" + std::string(file) + ":";
    if (message.compare(0, own.size(), own) == 0) line = std::atoi(message.c_str() + own.size());
    keep({file, line, severity, message});
}

void Diagnostics::addAsset(int severity, const std::string& message) {
    const char* file;
    int line;
    if (!uiLoadPlace(&file, &line) || !keepAtValues(m_named, severity, message, false))
        add(severity, message);
}

void Diagnostics::addAt(const std::string& file, int line, int severity, const std::string& message) {
    keep({file, line, severity, message});
}

void Diagnostics::pathNamed(const std::string& path, const Place& place) {
    m_paths.push_back({path, place});
}

void Diagnostics::setWaking(const Place& header, const std::vector<NamedValue>* values) {
    m_wakingHeader = header;
    m_wakingValues = values;
}

// Every key naming the value gets the message; of a widget's own keys (lastOnly) only the last one,
// since a later key overrides an earlier one.
bool Diagnostics::keepAtValues(const std::vector<NamedValue>& values, int severity,
                               const std::string& message, bool lastOnly) {
    bool placed = false;
    for (size_t i = 0; i < values.size() && !(placed && lastOnly); ++i) {
        const NamedValue& v = values[lastOnly ? values.size() - 1 - i : i];
        const std::string tail = ": " + v.value;
        if (message.size() < tail.size() ||
            message.compare(message.size() - tail.size(), tail.size(), tail) != 0)
            continue;
        keep({v.place.file, v.place.line, severity, message});
        placed = true;
    }
    return placed;
}

void Diagnostics::keep(Diagnostic d) {
    for (const Diagnostic& e : m_all)
        if (e.file == d.file && e.line == d.line && e.severity == d.severity && e.message == d.message)
            return;
    m_all.push_back(std::move(d));
}

void Diagnostics::write(int severity, const char* text) {
    if (severity >= Logger::kWarning) add(severity, plainText(text));
}

} // namespace devtools
