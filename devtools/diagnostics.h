// What a load reported: the library's messages and a checking tool's own, each tied to a file and line.
// uilint prints them; live reload shows them over the running screen in the same words.
#pragma once
#include <string>
#include <vector>
#include "logger.h"

namespace devtools {

struct Diagnostic {
    std::string file; // as the description named it, relative to the checked file's folder
    int line;         // 0: the file as a whole
    int severity;     // 1 warning, 2 error
    std::string message;
};

// A place in a description: a file as the description named it and a line (0: the file as a whole).
struct Place {
    std::string file;
    int line;
};

// A value a key gave ("sprite = ok" gives "ok"), with the key's place.
struct NamedValue {
    std::string value;
    Place place;
};

// A log sink that keeps the library's warnings and errors with the place being read when each was
// logged. An asset a widget asks for while a file is read (a line such as "active = true" wakes it) is
// placed at the keys read so far that named it (addAsset). A message logged outside any file (after loading)
// that ends with ": <value>" is placed at the keys that named that value: any widget path given to
// "globalinputfocus", or any value of the widget that is being woken; else at that widget's header, else at
// the checked file as a whole. The same message at the same place is kept once.
class Diagnostics : public Logger::Sink {
public:
    void setTopFile(const std::string& file) { m_topFile = file; }
    void add(int severity, const std::string& message); // at the current place
    // A missing asset: while loading, at the keys that named the value the message ends with.
    void addAsset(int severity, const std::string& message);
    void valueNamed(const NamedValue& value) { m_named.push_back(value); }
    void addAt(const std::string& file, int line, int severity, const std::string& message);
    // A key named the widget path `path`, which is resolved only after loading.
    void pathNamed(const std::string& path, const Place& place);
    // While a widget is woken after loading: its header and the values of its keys.
    void setWaking(const Place& header, const std::vector<NamedValue>* values);
    void clearWaking() { m_wakingValues = nullptr; }
    const std::vector<Diagnostic>& all() const { return m_all; }

    void write(int severity, const char* text) override;

private:
    void keep(Diagnostic d);
    // Keeps the message at every place whose value it ends with; false when there is none.
    bool keepAtValues(const std::vector<NamedValue>& values, int severity, const std::string& message,
                      bool lastOnly);

    std::string m_topFile;
    std::vector<NamedValue> m_paths;
    std::vector<NamedValue> m_named; // every key's value read so far
    Place m_wakingHeader;
    const std::vector<NamedValue>* m_wakingValues = nullptr;
    std::vector<Diagnostic> m_all;
};

// The message without its "..." lead, colour markup and final form feed.
std::string plainText(const char* text);

// "file:line: error: message" as compilers write it ("file: warning: message" for a whole file).
std::string diagnosticLine(const Diagnostic& d);

} // namespace devtools
