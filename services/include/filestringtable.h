// A string table read from a UTF-8 text file of "key = value" lines, read through the file library.
//
// The value is the rest of the line with its ends trimmed, or the content of double quotes (to keep
// blanks at the ends). Blank lines and lines starting with "#" or "//" are skipped; a byte-order mark
// at the start is ignored. Keys compare exactly; the first of two equal keys counts. An unknown key
// translates to itself.
#pragma once
#include "stringtable.h"

class UI_API FileStringTable : public StringTable {
public:
    FileStringTable() = default;
    ~FileStringTable() override;
    FileStringTable(const FileStringTable&) = delete;
    FileStringTable& operator=(const FileStringTable&) = delete;

    // Replaces the contents with the file's. On failure (logged) the table keeps what it had.
    bool load(const char* fileName);
    void clear();
    int size() const { return m_count; }

    const unsigned char* translate(const char* key) override; // the value, or the key itself

private:
    struct Entry {
        const char* key;
        const char* value;
    };
    char* m_text = nullptr;     // the file's text, cut into keys and values in place (pool 0)
    Entry* m_entries = nullptr; // sorted by key (pool 0)
    int m_count = 0;
};
