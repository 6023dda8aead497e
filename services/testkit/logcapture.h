// A log sink that keeps every message (text as logged, markup and final form feed included) and the
// names of registered clients. Thread-safe.
#pragma once
#include <mutex>
#include <string>
#include <vector>
#include "logger.h"

namespace testkit {

// One logged message.
struct LogEntry {
    int severity;     // 0 information, 1 warning, 2 error
    std::string text; // as logged, markup and form feed included
};

// A log sink that keeps every message for the test to look at.
class LogCapture : public Logger::Sink {
public:
    // What was logged: every entry, whether one with exactly this text was, how many.
    std::vector<LogEntry> entries() const;
    bool has(int severity, const std::string& exactText) const;
    int count() const;
    int count(int severity, const std::string& exactText) const; // entries with exactly this text
    void clear();                                                // forgets the entries
    std::vector<std::string> clients() const;                    // names given to registerClient, in order
    std::string dump() const; // every entry on a line of its own, for failure messages

    void write(int severity, const char* text) override;
    int registerClient(const char* name) override;

private:
    mutable std::mutex m_lock;
    std::vector<LogEntry> m_entries;
    std::vector<std::string> m_clients;
};

} // namespace testkit
