#include "filerecorder.h"
#include <climits>
#include <cstdio>

namespace devtools {
namespace {

thread_local std::set<std::string>* t_names = nullptr;

std::FILE* stream(FileHandle* f) {
    return reinterpret_cast<std::FILE*>(f);
}

} // namespace

FileRecorder::FileRecorder() : m_next(File::backend()) {
    File::setBackend(this);
}

FileRecorder::~FileRecorder() {
    File::setBackend(m_next);
}

void FileRecorder::record(std::set<std::string>* names) {
    t_names = names;
}

FileHandle* FileRecorder::open(const char* name, const char* mode) {
    if (t_names && name && mode && mode[0] == 'r') t_names->insert(name);
    if (m_next) return m_next->open(name, mode);
    return reinterpret_cast<FileHandle*>(std::fopen(name, mode));
}

int FileRecorder::getLength(FileHandle* f) {
    if (m_next) return m_next->getLength(f);
    const long position = std::ftell(stream(f));
    if (position < 0 || std::fseek(stream(f), 0, SEEK_END) != 0) return -1;
    const long length = std::ftell(stream(f));
    std::fseek(stream(f), position, SEEK_SET);
    return length < 0 || length > INT_MAX ? -1 : static_cast<int>(length);
}

unsigned int FileRecorder::read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) {
    if (m_next) return m_next->read(buffer, size, count, f);
    return static_cast<unsigned int>(std::fread(buffer, size, count, stream(f)));
}

void FileRecorder::close(FileHandle* f) {
    if (m_next)
        m_next->close(f);
    else
        std::fclose(stream(f));
}

void FileRecorder::registerThread() {
    if (m_next) m_next->registerThread();
}

void FileRecorder::unregisterThread() {
    if (m_next) m_next->unregisterThread();
}

} // namespace devtools
