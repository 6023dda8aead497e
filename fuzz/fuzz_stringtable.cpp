// A string table file loaded through the file library, then looked up by every key it names, by keys
// it does not know, and reloaded over its own contents.
#include <string>
#include "filestringtable.h"
#include "fuzzkit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testkit::Services svc;
    const std::string text(reinterpret_cast<const char*>(data), size);
    svc.files.add("strings.txt", text);
    {
        FileStringTable table;
        table.load("strings.txt");
        table.load("strings.txt");
        size_t start = 0;
        while (start < text.size()) {
            size_t end = text.find('\n', start);
            if (end == std::string::npos) end = text.size();
            std::string line = text.substr(start, end - start);
            std::string key = line.substr(0, line.find_first_of(" \t="));
            const unsigned char* value = table.translate(key.c_str());
            if (!value) __builtin_trap(); // every key translates, if only to itself
            start = end + 1;
        }
        table.translate("");
        table.translate("no such key");
        table.clear();
        table.translate("no such key");
    }
    fuzzkit::checkClean(svc);
    return 0;
}
