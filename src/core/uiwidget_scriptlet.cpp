// Scriptlets: files of parameter lines applied to a widget as if they stood in its block, read once
// into a cache of the most recently used files that every loading thread shares.
#include <cstring>
#include "core/uiloadnesting.h"
#include "core/uitextfile.h"
#include "core/uiutil.h"
#include "memorymgr.h"
#include "parser.h"
#include "runtime/uicriticalsection.h"
#include "uiwidget.h"

_ScriptletCache_s* uiWidget::s_scriptletCacheHead = nullptr;
_ScriptletCache_s* uiWidget::s_scriptletCacheTail = nullptr;
unsigned int uiWidget::s_scriptletCacheCount = 0;

namespace {

// The cache lock lives as long as the library. It is created when the library is loaded, from the memory
// manager of that moment, and given back to that same manager when the library is unloaded, whatever
// manager the game has installed since. Without it (no memory at load) scriptlets are read uncached.
class CacheLock {
public:
    CacheLock() : m_owner(g_MemoryPtr), m_lock(uiCriticalSection::create()) {}
    ~CacheLock() {
        if (!m_lock) return;
        m_lock->~uiCriticalSection();
        m_owner->free(uiWidget::kBufPool, m_lock);
    }
    uiCriticalSection* get() const { return m_lock; }

private:
    MemoryMgr* m_owner;
    uiCriticalSection* m_lock;
};
CacheLock s_cacheLock;

void unlink(_ScriptletCache_s* entry) {
    (entry->prev ? entry->prev->next : uiWidget::s_scriptletCacheHead) = entry->next;
    (entry->next ? entry->next->prev : uiWidget::s_scriptletCacheTail) = entry->prev;
    entry->next = entry->prev = nullptr;
}

void pushFront(_ScriptletCache_s* entry) {
    entry->prev = nullptr;
    entry->next = uiWidget::s_scriptletCacheHead;
    (uiWidget::s_scriptletCacheHead ? uiWidget::s_scriptletCacheHead->prev : uiWidget::s_scriptletCacheTail) =
        entry;
    uiWidget::s_scriptletCacheHead = entry;
}

void freeEntry(_ScriptletCache_s* entry) {
    ui::freeTextFile(entry->data);
    ui::poolDelete(uiWidget::kUIPool, entry);
}

// A private copy of `size` bytes for one widget to parse; null (logged) without memory.
unsigned char* copyText(const unsigned char* data, unsigned int size, const char* file) {
    void* copy = g_MemoryPtr->alloc(uiWidget::kBufPool, size, __FILE__, __LINE__);
    if (!copy) {
        ui::logAllocationError(file);
        return nullptr;
    }
    return static_cast<unsigned char*>(std::memcpy(copy, data, size));
}

} // namespace

void uiWidget::applyScriptlet(const char* file) {
    _parseScriptlet(file);
}

void uiWidget::_parseScriptlet(const char* file) {
    ui::NestingLevel level(ui::NestingLevel::File, file);
    if (!level.entered()) return;

    unsigned char* text = nullptr;
    if (uiCriticalSection* lock = s_cacheLock.get()) {
        unsigned int size = 0;
        uiScopedLock hold(lock);
        // Copied under the lock: another thread may evict the entry as soon as it is released.
        if (const unsigned char* data = _loadCachedScriptlet(file, &size)) text = copyText(data, size, file);
    } else {
        unsigned int length = 0;
        text = ui::readTextFile(file, &length);
    }
    if (!text) return;

    void* memory = g_MemoryPtr->alloc(kBufPool, sizeof(Parser), __FILE__, __LINE__);
    if (!memory) {
        ui::logAllocationError(file);
    } else {
        Parser* parser = new (memory) Parser(reinterpret_cast<char*>(text));
        ui::NestingLevel::setParser(parser);
        parse(parser, true);
        parser->~Parser();
        g_MemoryPtr->free(kBufPool, memory);
    }
    ui::freeTextFile(text);
}

unsigned char* uiWidget::_loadCachedScriptlet(const char* file, unsigned int* size) {
    *size = 0;
    int count = 0;
    for (_ScriptletCache_s* entry = s_scriptletCacheHead; entry; entry = entry->next, ++count) {
        if (!ui::equalNoCase(entry->name, file)) continue;
        if (entry != s_scriptletCacheHead) {
            unlink(entry);
            pushFront(entry);
        }
        *size = entry->size;
        return entry->data;
    }
    if (count >= kScriptletCacheSize) {
        _ScriptletCache_s* oldest = s_scriptletCacheTail;
        unlink(oldest);
        freeEntry(oldest);
    }

    // Only complete texts are cached: a file that fails is tried again at its next application.
    unsigned int length = 0;
    unsigned char* data = ui::readTextFile(file, &length);
    if (!data) return nullptr;
    _ScriptletCache_s* entry = UI_POOL_NEW(_ScriptletCache_s, kUIPool);
    if (!entry) {
        ui::logAllocationError(file);
        ui::freeTextFile(data);
        return nullptr;
    }
    ui::copyName(entry->name, file);
    entry->data = data;
    entry->size = length + 1;
    pushFront(entry);
    *size = entry->size;
    return data;
}

void uiWidget::s_freeScripletCache() {
    uiScopedLock hold(s_cacheLock.get());
    while (_ScriptletCache_s* entry = s_scriptletCacheHead) {
        s_scriptletCacheHead = entry->next;
        freeEntry(entry);
    }
    s_scriptletCacheTail = nullptr;
}
