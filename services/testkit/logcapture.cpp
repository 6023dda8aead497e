#include "logcapture.h"
#include <algorithm>

namespace testkit {

std::vector<LogEntry> LogCapture::entries() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_entries;
}

bool LogCapture::has(int severity, const std::string& exactText) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return std::any_of(m_entries.begin(), m_entries.end(),
                       [&](const LogEntry& e) { return e.severity == severity && e.text == exactText; });
}

int LogCapture::count(int severity, const std::string& exactText) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return static_cast<int>(std::count_if(m_entries.begin(), m_entries.end(), [&](const LogEntry& e) {
        return e.severity == severity && e.text == exactText;
    }));
}

int LogCapture::count() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return static_cast<int>(m_entries.size());
}

void LogCapture::clear() {
    std::lock_guard<std::mutex> guard(m_lock);
    m_entries.clear();
}

std::vector<std::string> LogCapture::clients() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_clients;
}

std::string LogCapture::dump() const {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string out;
    for (const LogEntry& e : m_entries)
        out += std::to_string(e.severity) + ": " + e.text + "\n";
    return out;
}

void LogCapture::write(int severity, const char* text) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_entries.push_back(LogEntry{severity, text ? text : ""});
}

int LogCapture::registerClient(const char* name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_clients.push_back(name ? name : "");
    return static_cast<int>(m_clients.size());
}

} // namespace testkit
