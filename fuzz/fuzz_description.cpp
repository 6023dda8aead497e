// A UI description, with the files it includes and the scriptlets it applies, loaded and run like a
// game's screen. Input: the description, then "--- <name>" lines starting each further file.
#include "fuzzkit.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    testkit::Services svc;
    fuzzkit::addFiles(svc, data, size, "screen.txt");
    testkit::playScreen("screen.txt");
    fuzzkit::checkClean(svc);
    return 0;
}
