#include "memoryfiles.h"
#include <algorithm>
#include <cstring>

namespace testkit {

struct MemoryFiles::Open {
    std::string data;
    std::size_t position = 0;
    bool failRead = false;
};

void MemoryFiles::add(const std::string& name, const std::string& contents) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_files[name] = contents;
}

void MemoryFiles::remove(const std::string& name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_files.erase(name);
}

void MemoryFiles::failRead(const std::string& name) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_failRead.insert(name);
}

int MemoryFiles::opens(const std::string& name) const {
    std::lock_guard<std::mutex> guard(m_lock);
    auto it = m_opens.find(name);
    return it == m_opens.end() ? 0 : it->second;
}

int MemoryFiles::openHandles() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_openHandles;
}

int MemoryFiles::registeredThreads() const {
    std::lock_guard<std::mutex> guard(m_lock);
    return m_threads;
}

FileHandle* MemoryFiles::open(const char* name, const char* mode) {
    std::lock_guard<std::mutex> guard(m_lock);
    ++m_opens[name];
    auto it = m_files.find(name);
    if (it == m_files.end() || !std::strchr(mode, 'r') || std::strpbrk(mode, "wa+")) return nullptr;
    ++m_openHandles;
    return reinterpret_cast<FileHandle*>(new Open{it->second, 0, m_failRead.count(name) > 0});
}

int MemoryFiles::getLength(FileHandle* f) {
    return static_cast<int>(reinterpret_cast<Open*>(f)->data.size());
}

// Like fread: whole blocks only, from the current position.
unsigned int MemoryFiles::read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) {
    Open* file = reinterpret_cast<Open*>(f);
    if (file->failRead || size == 0) return 0;
    std::size_t blocks = std::min<std::size_t>(count, (file->data.size() - file->position) / size);
    std::memcpy(buffer, file->data.data() + file->position, blocks * size);
    file->position += blocks * size;
    return static_cast<unsigned int>(blocks);
}

void MemoryFiles::close(FileHandle* f) {
    delete reinterpret_cast<Open*>(f);
    std::lock_guard<std::mutex> guard(m_lock);
    --m_openHandles;
}

void MemoryFiles::registerThread() {
    std::lock_guard<std::mutex> guard(m_lock);
    ++m_threads;
}

void MemoryFiles::unregisterThread() {
    std::lock_guard<std::mutex> guard(m_lock);
    --m_threads;
}

} // namespace testkit
