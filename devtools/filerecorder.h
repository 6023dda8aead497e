// A file backend in front of the game's: it passes every call on and, while a load runs on the thread
// that asked (record()), keeps the name of each file opened for reading, found or not, so that a file
// a description includes but that does not exist yet is watched too.
#pragma once
#include <set>
#include <string>
#include "file.h"

namespace devtools {

class FileRecorder : public File::Backend {
public:
    FileRecorder();           // installs itself in front of the installed backend
    ~FileRecorder() override; // puts that backend back
    FileRecorder(const FileRecorder&) = delete;
    FileRecorder& operator=(const FileRecorder&) = delete;

    // Names opened by this thread go to `names` until record(nullptr).
    static void record(std::set<std::string>* names);

    FileHandle* open(const char* name, const char* mode) override;
    int getLength(FileHandle* f) override;
    unsigned int read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) override;
    void close(FileHandle* f) override;
    void registerThread() override;
    void unregisterThread() override;

private:
    File::Backend* m_next; // null: stdio, as the library's built-in backend reads
};

} // namespace devtools
