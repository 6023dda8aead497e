// A log sink that keeps every message (text as logged, markup and final form feed included) and the
// names of registered clients. Thread-safe.
#pragma once
#include <mutex>
#include <string>
#include <vector>
#include "logger.h"

namespace testkit {

struct LogEntry {
    int severity;
    std::string text;
};

class LogCapture : public Logger::Sink {
public:
    std::vector<LogEntry> entries() const;
    bool has(int severity, const std::string& exactText) const;
    int count() const;
    int count(int severity, const std::string& exactText) const; // entries with exactly this text
    void clear();
    std::vector<std::string> clients() const;
    std::string dump() const; // every entry on a line of its own, for failure messages

    void write(int severity, const char* text) override;
    int registerClient(const char* name) override;

private:
    mutable std::mutex m_lock;
    std::vector<LogEntry> m_entries;
    std::vector<std::string> m_clients;
};

} // namespace testkit
