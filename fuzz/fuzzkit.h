// Shared pieces of the fuzz targets: an input cut into in-memory files and the checks every run must pass.
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

// Aborts (a finding) when a block is still outstanding in any pool, a free named the wrong pool or a
// block never handed out, or a logged message lacks its final form feed.
void checkClean(testkit::Services& svc);

} // namespace fuzzkit
