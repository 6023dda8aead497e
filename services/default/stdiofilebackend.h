// The built-in file backend on C stdio. Its FileHandle is the std::FILE itself.
#pragma once
#include "file.h"

namespace ui {

class StdioFileBackend : public File::Backend {
public:
    constexpr StdioFileBackend() = default;
    FileHandle* open(const char* name, const char* mode) override;
    int getLength(FileHandle* f) override;
    unsigned int read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) override;
    void close(FileHandle* f) override;
};

} // namespace ui
