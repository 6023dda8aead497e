#include "core/uitextfile.h"
#include "core/uiloadnesting.h"
#include "file.h"
#include "logger.h"
#include "memorymgr.h"
#include "uiwidget.h"

namespace ui {

void logAllocationError(const char* file) {
    Logger::log(Logger::kError, "uiSubsystem: Memory Allocation Error: \"^C00FF00%s^c\"\f", file);
}

static void logReadError(const char* file) {
    Logger::log(Logger::kError, "uiSubsystem: File I/O Error: \"^C00FF00%s^c\"\f", file);
}

unsigned char* readTextFile(const char* file, unsigned int* length) {
    FileHandle* handle = File::open(file, "rb");
    if (!handle) {
        Logger::log(Logger::kError, "uiSubsystem: could not open file: \"^C00FF00%s^c\"\f", file);
        return nullptr;
    }
    const int size = File::getLength(handle);
    unsigned char* text = nullptr;
    if (size < 0) {
        logReadError(file);
    } else if (static_cast<unsigned int>(size) > kMaxTextFileBytes) {
        Logger::log(Logger::kError, "uiSubsystem: file too large: \"^C00FF00%s^c\" (%d bytes, limit %u)\f",
                    file, size, kMaxTextFileBytes);
    } else {
        const unsigned int n = static_cast<unsigned int>(size);
        text = static_cast<unsigned char*>(g_MemoryPtr->alloc(uiWidget::kBufPool, n + 1, __FILE__, __LINE__));
        if (!text) {
            logAllocationError(file);
        } else if (n > 0 && File::read(text, n, 1, handle) != 1) {
            // A partial text would build a partial screen: nothing is used.
            logReadError(file);
            freeTextFile(text);
            text = nullptr;
        } else {
            text[n] = '\0';
            *length = n;
        }
    }
    File::close(handle);
    return text;
}

void freeTextFile(unsigned char* text) {
    if (text) g_MemoryPtr->free(uiWidget::kBufPool, text);
}

} // namespace ui
