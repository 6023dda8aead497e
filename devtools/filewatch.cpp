#include "filewatch.h"
#include <filesystem>
#ifdef __linux__
#include <sys/inotify.h>
#include <unistd.h>
#endif

namespace fs = std::filesystem;

namespace devtools {

FileWatch::FileWatch(unsigned int pollMs, unsigned int settleMs) : m_pollMs(pollMs), m_settleMs(settleMs) {
#ifdef __linux__
    m_notify = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
#endif
}

FileWatch::~FileWatch() {
#ifdef __linux__
    if (m_notify >= 0) close(m_notify);
#endif
}

FileWatch::Stamp FileWatch::stamp(const std::string& path) {
    Stamp s;
    std::error_code error;
    const auto size = fs::file_size(path, error);
    if (error) return s;
    const auto time = fs::last_write_time(path, error);
    if (error) return s;
    s.exists = true;
    s.size = static_cast<long long>(size);
    s.time = static_cast<long long>(time.time_since_epoch().count());
    return s;
}

void FileWatch::add(const std::string& path) {
    if (m_files.count(path)) return;
    m_files[path].seen = stamp(path);
    watchFolder(path);
}

// Folders, not files: editors save by writing a new file and renaming it over the old one.
void FileWatch::watchFolder(const std::string& path) {
#ifdef __linux__
    if (m_notify < 0) return;
    std::string folder = fs::path(path).parent_path().string();
    if (folder.empty()) folder = ".";
    if (m_folders.count(folder)) return;
    m_folders[folder] = inotify_add_watch(m_notify, folder.c_str(),
                                          IN_CLOSE_WRITE | IN_MODIFY | IN_MOVED_TO | IN_CREATE | IN_DELETE);
#else
    (void)path;
#endif
}

bool FileWatch::notified() {
    bool any = false;
#ifdef __linux__
    alignas(inotify_event) char buffer[4096];
    while (m_notify >= 0 && read(m_notify, buffer, sizeof buffer) > 0)
        any = true;
#endif
    return any;
}

std::vector<std::string> FileWatch::changed(unsigned long long now) {
    std::vector<std::string> out;
    bool settling = false;
    for (const auto& f : m_files)
        settling = settling || f.second.changing;
    const bool due = !m_looked || now - m_lastLook >= m_pollMs;
    if (!notified() && !due && !settling) return out;
    m_looked = true;
    m_lastLook = now;
    for (auto& f : m_files) {
        Entry& e = f.second;
        const Stamp s = stamp(f.first);
        if (!(s != e.seen)) {
            e.changing = false;
        } else if (!e.changing || s != e.pending) {
            e.changing = true;
            e.pending = s;
            e.since = now;
        } else if (now - e.since >= m_settleMs) {
            e.seen = s;
            e.changing = false;
            out.push_back(f.first);
        }
    }
    return out;
}

} // namespace devtools
