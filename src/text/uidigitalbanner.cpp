// uiDigitalBanner: construction, copying, description keys, font and printing. The queue, the markup
// and the animation live in the uidigitalbanner_*.cpp files next to this one.
#include "uidigitalbanner.h"
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include "core/uidescvalue.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiDigitalBanner, uiWidget, "uidigitalbanner.h")

uiDigitalBanner::uiDigitalBanner() = default;

uiDigitalBanner::uiDigitalBanner(const uiDigitalBanner& other) : uiWidget() {
    _copySettings(other);
}

uiDigitalBanner& uiDigitalBanner::operator=(const uiDigitalBanner& other) {
    if (this != &other) {
        _removeAllMessages();
        _copySettings(other);
    }
    return *this;
}

uiDigitalBanner::~uiDigitalBanner() {
    _removeAllMessages();
}

// The queue stays with its owner: a copy sharing it would free it twice.
void uiDigitalBanner::_copySettings(const uiDigitalBanner& other) {
    _copyWidgetFields(other);
    width = other.width;
    height = other.height;
    font = other.font;
    std::memcpy(charWidths, other.charWidths, sizeof charWidths);
    fontHeight = other.fontHeight;
    maxMessages = other.maxMessages;
    paused = other.paused;
    timeScale = other.timeScale;
}

// ---- description keys -------------------------------------------------------------------------------

void uiDigitalBanner::_parseParams(Parser* parser, char* key) {
    if (parser->ParamEqualsInt32(key, "width", &width)) return;
    if (parser->ParamEqualsUInt32(key, "maxmessages", &maxMessages)) return;
    if (ui::equalNoCase(key, "font")) {
        const char* value = ui::nameAfterEquals(parser, "font = \"val\"");
        if (value && !setFont(value))
            Logger::log(Logger::kError, "...failed to create font: %s for %s\f", value, name);
        return;
    }
    if (parser->ParamEqualsInt32(key, "height", &height)) return;
    uiWidget::_parseParams(parser, key);
}

// ---- font and printing ------------------------------------------------------------------------------

bool uiDigitalBanner::setFont(const char* fontName) {
    font = g_gfx ? g_gfx->createFont(fontName) : -1;
    if (font == -1) return false;
    g_gfx->getFontDimensions(font, charWidths, &fontHeight);
    return true;
}

void uiDigitalBanner::print(unsigned int priority, const char* format, ...) {
    constexpr unsigned int kWorkBuffer = 2048;
    constexpr std::size_t kMessageBytes = 128; // 127 characters and the terminator
    char* buffer = static_cast<char*>(g_MemoryPtr->alloc(kBufPool, kWorkBuffer, __FILE__, __LINE__));
    if (!buffer) return; // dropped without a log line: printing is fire-and-forget for the game
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, kMessageBytes, format, args);
    va_end(args);
    if (dbMessage_t* message = _addMessage(priority)) _extractMessage(buffer, message);
    g_MemoryPtr->free(kBufPool, buffer);
}

void uiDigitalBanner::print(const char* format, ...) {
    char buffer[128];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    print(0u, "%s", buffer);
}

void uiDigitalBanner::_update(int, int) {}
