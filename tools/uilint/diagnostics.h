// What uilint found: messages of the library and of uilint's own checks, each tied to a file and line.
#pragma once
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
// logged. A message logged outside any file (after loading, while the tree initializes) is placed at
// the keys that named the path it ends with, else at the checked file as a whole. The same message at
// the same place is kept once.
class Diagnostics : public Logger::Sink {
public:
    void setTopFile(const std::string& file) { m_topFile = file; }
    void add(int severity, const std::string& message); // at the current place
    void addAt(const std::string& file, int line, int severity, const std::string& message);
    // A key at file:line named the widget path `path`, which is resolved only after loading.
    void pathNamed(const std::string& path, const std::string& file, int line);
    const std::vector<Diagnostic>& all() const { return m_all; }

    void write(int severity, const char* text) override;

private:
    struct PathKey {
        std::string path, file;
        int line;
    };
    void keep(Diagnostic d);

    std::string m_topFile;
    std::vector<PathKey> m_pathKeys;
    std::vector<Diagnostic> m_all;
};

// The message without its "..." lead, colour markup and final form feed.
std::string plainText(const char* text);

} // namespace uilint
