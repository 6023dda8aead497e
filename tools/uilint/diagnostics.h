// What uilint found: messages of the library and of the asset check, each tied to a file and line.
#pragma once
#include <mutex>
#include <string>
#include <vector>
#include "logger.h"

namespace uilint {

struct Diagnostic {
    std::string file; // as the description named it, relative to the checked file's folder
    int line;         // 0: the file as a whole
    int severity;     // 1 warning, 2 error
    std::string message;
};

// A log sink that keeps the library's warnings and errors with the place being read when each was
// logged; a message logged outside any file (after loading, while the tree initializes) goes to the
// checked file itself.
class Diagnostics : public Logger::Sink {
public:
    void setTopFile(const std::string& file) { m_topFile = file; }
    void add(int severity, const std::string& message); // at the current place
    const std::vector<Diagnostic>& all() const { return m_all; }

    void write(int severity, const char* text) override;

private:
    std::string m_topFile;
    std::vector<Diagnostic> m_all;
};

// The message without its "..." lead, colour markup and final form feed.
std::string plainText(const char* text);

} // namespace uilint
