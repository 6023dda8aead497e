// A file backend over in-memory files, for tests and for games that pack their files. Names compare
// exactly. Files open for reading only; a file's contents are copied when it is opened, so changing or
// removing it later does not affect open handles. Thread-safe.
#pragma once
#include <map>
#include <mutex>
#include <set>
#include <string>
#include "file.h"

namespace testkit {

class MemoryFiles : public File::Backend {
public:
    // Files by name: added (or replaced), removed.
    void add(const std::string& name, const std::string& contents);
    void remove(const std::string& name);
    void failRead(const std::string& name);   // reads of this file return 0
    int opens(const std::string& name) const; // open attempts, found or not
    int openHandles() const;                  // opened and not yet closed
    int registeredThreads() const;            // registerThread calls minus unregisterThread calls

    FileHandle* open(const char* name, const char* mode) override;
    int getLength(FileHandle* f) override;
    unsigned int read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) override;
    void close(FileHandle* f) override;
    void registerThread() override;
    void unregisterThread() override;

private:
    struct Open;
    mutable std::mutex m_lock;
    std::map<std::string, std::string> m_files;
    std::map<std::string, int> m_opens;
    std::set<std::string> m_failRead;
    int m_openHandles = 0;
    int m_threads = 0;
};

} // namespace testkit
