// Where the calling thread is reading descriptions and scriptlets, for tools that tie log messages to
// a file and line (a log sink runs on the thread that logs).
#pragma once
#include "uiapi.h"

// The innermost file whose text is being read and the line its parser is on. A file still being
// opened does not count yet, so a missing include is placed at the line that names it. Returns false
// (file "", line 0) when the thread reads no description.
UI_API bool uiLoadPlace(const char** file, int* line);
