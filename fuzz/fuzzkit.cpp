#include "fuzzkit.h"
#include <cstdio>
#include <cstdlib>

namespace fuzzkit {

void addFiles(testkit::Services& svc, const uint8_t* data, size_t size, const char* first) {
    static const std::string kSeparator = "--- ";
    const std::string text(reinterpret_cast<const char*>(data), size);
    std::string name = first;
    size_t start = 0;
    for (int files = 1;; ++files) {
        size_t sep = text.find("\n" + kSeparator, start);
        if (files == 8 || sep == std::string::npos) {
            svc.files.add(name, text.substr(start));
            return;
        }
        svc.files.add(name, text.substr(start, sep + 1 - start));
        size_t nameStart = sep + 1 + kSeparator.size();
        size_t nameEnd = text.find('\n', nameStart);
        if (nameEnd == std::string::npos) nameEnd = text.size();
        name = text.substr(nameStart, nameEnd - nameStart);
        start = nameEnd < text.size() ? nameEnd + 1 : nameEnd;
    }
}

void checkClean(testkit::Services& svc) {
    bool dirty = svc.memory.outstandingBlocks() != 0 || svc.memory.poolMismatches() != 0 ||
                 svc.memory.strayFrees() != 0;
    if (dirty) std::fprintf(stderr, "memory not clean:\n%s", svc.memory.report().c_str());
    for (const testkit::LogEntry& e : svc.log.entries()) {
        if (e.text.empty() || e.text.back() != '\f') {
            std::fprintf(stderr, "log message without its form feed: %s\n", e.text.c_str());
            dirty = true;
        }
    }
    if (dirty) std::abort();
}

} // namespace fuzzkit
