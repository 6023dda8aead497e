// Shared pieces of the fuzz targets: an input cut into in-memory files or read as numbers, and the checks
// every run must pass.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include "exercise.h"
#include "testkit.h"
#include "uisubsystem.h"

namespace fuzzkit {

// Cuts `data` into in-memory files: the text before the first line "--- <name>" is `first`; each such
// line starts a file called <name>. At most 8 files; later separators stay part of the last file.
void addFiles(testkit::Services& svc, const uint8_t* data, size_t size, const char* first);

// The input, read front to back; past its end every read gives 0.
class Bytes {
public:
    Bytes(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}
    bool more() const { return m_pos < m_size; }
    unsigned int u8() { return m_pos < m_size ? m_data[m_pos++] : 0; }
    unsigned int u16() {
        const unsigned int low = u8();
        return low | u8() << 8;
    }
    unsigned int u32() {
        const unsigned int low = u16();
        return low | u16() << 16;
    }
    std::string text(size_t max) {
        std::string s;
        for (size_t n = u8() % (max + 1); n > 0 && more(); --n)
            if (unsigned int c = u8()) s += static_cast<char>(c);
        return s;
    }

private:
    const uint8_t* m_data;
    size_t m_size;
    size_t m_pos = 0;
};

// Aborts (a finding) when a block is still outstanding in any pool, a free named the wrong pool or a
// block never handed out, or a logged message lacks its final form feed.
void checkClean(testkit::Services& svc);

} // namespace fuzzkit
