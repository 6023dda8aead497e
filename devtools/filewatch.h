// Watches a set of files for saves. Each look compares a file's size and modification time with what it
// last reported; a change is reported once the file has stayed the same for `settleMs` (an editor still
// writing it, or a copy in progress, keeps changing it). A file that appears, vanishes or cannot be read
// counts as a change too. Where the platform notifies changes (inotify), a notification brings the next
// look forward; otherwise files are looked at every `pollMs`.
#pragma once
#include <map>
#include <string>
#include <vector>

namespace devtools {

class FileWatch {
public:
    FileWatch(unsigned int pollMs, unsigned int settleMs);
    ~FileWatch();
    FileWatch(const FileWatch&) = delete;
    FileWatch& operator=(const FileWatch&) = delete;

    // Starts watching `path` (a no-op when already watched), taking its present state as seen.
    void add(const std::string& path);
    // The files whose change has settled by `now` (milliseconds); empty between looks.
    std::vector<std::string> changed(unsigned long long now);

private:
    struct Stamp {
        bool exists = false;
        long long size = -1;
        long long time = 0;
        bool operator!=(const Stamp& o) const {
            return exists != o.exists || size != o.size || time != o.time;
        }
    };
    struct Entry {
        Stamp seen;    // what was last reported
        Stamp pending; // a change not yet settled
        unsigned long long since = 0;
        bool changing = false;
    };
    static Stamp stamp(const std::string& path);
    bool notified(); // drains the platform's change notifications: true when there were any
    void watchFolder(const std::string& path);

    unsigned int m_pollMs, m_settleMs;
    unsigned long long m_lastLook = 0;
    bool m_looked = false;
    std::map<std::string, Entry> m_files;
    [[maybe_unused]] int m_notify = -1; // inotify descriptor (Linux); -1: polling only
    std::map<std::string, int> m_folders;
};

} // namespace devtools
