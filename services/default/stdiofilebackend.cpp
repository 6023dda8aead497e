#include "stdiofilebackend.h"
#include <climits>
#include <cstdio>

namespace ui {
namespace {
std::FILE* stream(FileHandle* f) {
    return reinterpret_cast<std::FILE*>(f);
}
} // namespace

FileHandle* StdioFileBackend::open(const char* name, const char* mode) {
    return reinterpret_cast<FileHandle*>(std::fopen(name, mode));
}

// The length of the whole file; the read position is left where it was.
int StdioFileBackend::getLength(FileHandle* f) {
    long position = std::ftell(stream(f));
    if (position < 0 || std::fseek(stream(f), 0, SEEK_END) != 0) return -1;
    long length = std::ftell(stream(f));
    std::fseek(stream(f), position, SEEK_SET);
    return length < 0 || length > INT_MAX ? -1 : static_cast<int>(length);
}

unsigned int StdioFileBackend::read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) {
    return static_cast<unsigned int>(std::fread(buffer, size, count, stream(f)));
}

void StdioFileBackend::close(FileHandle* f) {
    std::fclose(stream(f));
}

} // namespace ui
