// The file-backed string table: the file is read into one buffer, the tokenizer cuts keys and values in
// place, and a sorted index of them answers translate() by binary search.
#include "filestringtable.h"
#include <algorithm>
#include <cstring>
#include "file.h"
#include "logger.h"
#include "memorymgr.h"
#include "parser.h"

namespace {

constexpr int kPool = 0;

void* allocate(unsigned int size) {
    return g_MemoryPtr ? g_MemoryPtr->alloc(kPool, size, __FILE__, __LINE__) : nullptr;
}

void release(void* p) {
    if (p) g_MemoryPtr->free(kPool, p);
}

// The whole file, 0-ended, in a pool-0 buffer; null (logged) when it cannot be read.
char* readFile(const char* fileName) {
    FileHandle* f = File::open(fileName, "rb");
    if (!f) {
        Logger::log(Logger::kError, "FileStringTable: cannot open %s\f", fileName);
        return nullptr;
    }
    int length = File::getLength(f);
    char* text = length < 0 ? nullptr : static_cast<char*>(allocate(static_cast<unsigned int>(length) + 1));
    if (length < 0)
        Logger::log(Logger::kError, "FileStringTable: cannot read %s\f", fileName);
    else if (!text)
        Logger::log(Logger::kError, "FileStringTable: %s: Out of Memory\f", fileName);
    else if (length > 0 && File::read(text, static_cast<unsigned int>(length), 1, f) != 1) {
        Logger::log(Logger::kError, "FileStringTable: cannot read %s\f", fileName);
        release(text);
        text = nullptr;
    }
    if (text) text[length] = '\0';
    File::close(f);
    return text;
}

int countLines(const char* text) {
    int lines = 1;
    for (const char* p = text; *p; ++p)
        if (*p == '\n' || (*p == '\r' && p[1] != '\n')) ++lines;
    return lines;
}

bool isComment(const char* token) {
    return token[0] == '#' || (token[0] == '/' && token[1] == '/');
}

} // namespace

FileStringTable::~FileStringTable() {
    clear();
}

void FileStringTable::clear() {
    release(m_entries);
    release(m_text);
    m_entries = nullptr;
    m_text = nullptr;
    m_count = 0;
}

bool FileStringTable::load(const char* fileName) {
    if (!fileName) return false;
    char* text = readFile(fileName);
    if (!text) return false;
    int capacity = countLines(text);
    auto* entries = static_cast<Entry*>(allocate(static_cast<unsigned int>(capacity * sizeof(Entry))));
    if (!entries) {
        Logger::log(Logger::kError, "FileStringTable: %s: Out of Memory\f", fileName);
        release(text);
        return false;
    }
    const char* bom = "\xEF\xBB\xBF";
    Parser parser(std::strncmp(text, bom, 3) == 0 ? text + 3 : text);
    int count = 0;
    while (parser.ParseLine()) {
        const char* key = parser.GetToken(" ");
        if (!key || isComment(key)) continue;
        if (!parser.GetEqualsToken()) {
            Logger::log(Logger::kWarning, "FileStringTable: %s:%d: expected: key = value\f", fileName,
                        parser.GetLineNumber());
            continue;
        }
        entries[count++] = Entry{key, parser.GetString()};
    }
    // Keys lie in file order in the buffer, so their addresses break ties: the first of equal keys sorts
    // in front and is the one kept. (std::sort, unlike stable_sort, needs no memory of its own.)
    std::sort(entries, entries + count, [](const Entry& a, const Entry& b) {
        int order = std::strcmp(a.key, b.key);
        return order < 0 || (order == 0 && a.key < b.key);
    });
    count = static_cast<int>(
        std::unique(entries, entries + count,
                    [](const Entry& a, const Entry& b) { return !std::strcmp(a.key, b.key); }) -
        entries);
    clear();
    m_text = text;
    m_entries = entries;
    m_count = count;
    return true;
}

const unsigned char* FileStringTable::translate(const char* key) {
    if (!key) return reinterpret_cast<const unsigned char*>("");
    const Entry* begin = m_entries;
    const Entry* end = m_entries + m_count;
    const Entry* found = std::lower_bound(
        begin, end, key, [](const Entry& e, const char* k) { return std::strcmp(e.key, k) < 0; });
    const char* text = found != end && !std::strcmp(found->key, key) ? found->value : key;
    return reinterpret_cast<const unsigned char*>(text);
}
