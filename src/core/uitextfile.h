// Reading description and scriptlet files: the whole file in one read, into a NUL-terminated buffer
// from the buffer pool, so that the parser can work on it in place.
#pragma once

namespace ui {

// The file's text and its length, or null with the reason logged (open, size, memory or read failure).
unsigned char* readTextFile(const char* file, unsigned int* length);
void freeTextFile(unsigned char* text);

// "uiSubsystem: Memory Allocation Error" for a buffer needed to read or apply `file`.
void logAllocationError(const char* file);

} // namespace ui
