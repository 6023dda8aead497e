// The file library the library reads descriptions and scriptlets through. A game may install its own
// backend (packed archives, in-memory files); the built-in one uses stdio. FileHandle is only ever a
// pointer: each backend casts its own handle type to it.
#pragma once
#include "uiapi.h"

struct FileHandle; // defined by each backend

// File access for the library and for games.
namespace File {
// The calls the library makes, handed to the installed backend: open a file (mode as fopen's), its
// length in bytes, fread-style reading (items read), close; threads other than the game's (background
// loaders) announce themselves before they read.
UI_API FileHandle* open(const char* name, const char* mode); // null on failure
UI_API int getLength(FileHandle* f);
UI_API unsigned int read(void* buffer, unsigned int size, unsigned int count, FileHandle* f);
UI_API void close(FileHandle* f);
UI_API void registerThread();
UI_API void unregisterThread();

// A game's own file backend: the same calls; the thread announcements do nothing unless overridden.
class UI_API Backend {
public:
    virtual ~Backend();
    // As File::open and the calls after it.
    virtual FileHandle* open(const char* name, const char* mode) = 0;
    virtual int getLength(FileHandle* f) = 0;
    virtual unsigned int read(void* buffer, unsigned int size, unsigned int count, FileHandle* f) = 0;
    virtual void close(FileHandle* f) = 0;
    virtual void registerThread();
    virtual void unregisterThread();
};
UI_API void setBackend(Backend* backend); // null: built-in stdio backend
UI_API Backend* backend();                // the installed backend, null for the built-in one
} // namespace File
