// uiEntryWidget: typing into the text widget's storage, acceptance, the blinking cursor.
#include "uientrywidget.h"
#include "core/uidescvalue.h"
#include "core/uinumber.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiEntryWidget, uiTextWidget, "uientrywidget.h")

namespace {

constexpr int kMaxCharacters = uiTextWidget::kTextCapacity - 1;

// "= int" read as one integer; a missing "=", a missing or malformed number logs `form`.
bool intAfterEquals(Parser* parser, const char* form, int* value) {
    const char* token = ui::nameAfterEquals(parser, form);
    if (!token) return false;
    if (ui::parseInt32(token, value)) return true;
    ui::logExpected(form);
    return false;
}

} // namespace

uiEntryWidget::uiEntryWidget() = default;

uiEntryWidget::uiEntryWidget(const uiEntryWidget& other) : uiTextWidget(other) {
    _copyEntry(other);
}

uiEntryWidget& uiEntryWidget::operator=(const uiEntryWidget& other) {
    if (this != &other) {
        uiTextWidget::operator=(other);
        _copyEntry(other);
    }
    return *this;
}

// Each field gives its cursor sprite back when destroyed, so the copy creates one of its own from the
// same sprite (none when that fails) instead of sharing the handle.
void uiEntryWidget::_copyEntry(const uiEntryWidget& other) {
    length = other.length;
    entryWidth = other.entryWidth;
    accepted = other.accepted;
    const char* sprite = other.cursor != -1 && g_gfx ? g_gfx->getSpriteName(other.cursor) : nullptr;
    const int previous = cursor;
    cursor = sprite ? g_gfx->createSprite(sprite) : -1;
    _releaseSprite(previous);
    cursorFrame = other.cursorFrame;
    cursorRate = other.cursorRate;
    cursorTimer = other.cursorTimer;
    entryRect = other.entryRect;
    endHideCursor = other.endHideCursor;
    acceptOnEnter = other.acceptOnEnter;
}

uiEntryWidget::~uiEntryWidget() {
    _releaseSprite(cursor);
}

// ---- description keys -------------------------------------------------------------------------------

void uiEntryWidget::_parseParams(Parser* parser, char* key) {
    int value = 0;
    if (ui::equalNoCase(key, "entrywidth")) {
        if (intAfterEquals(parser, "entrywidth = val", &value)) entryWidth = value;
        return;
    }
    if (ui::equalNoCase(key, "cursorrate")) {
        if (!intAfterEquals(parser, "cursorrate = val", &value)) return;
        if (value < 0)
            ui::logExpected("cursorrate = val");
        else
            cursorRate = static_cast<unsigned int>(value);
        return;
    }
    if (ui::equalNoCase(key, "cursor")) {
        const char* sprite = ui::nameAfterEquals(parser, "cursor = \"val\"");
        if (sprite && !setCursor(sprite))
            Logger::log(Logger::kError, "...failed to create cursor: %s for %s\f", sprite, name);
        return;
    }
    if (ui::equalNoCase(key, "entryrectx")) {
        if (!intAfterEquals(parser, "entryrectx = val", &value)) return;
        if (justify & JUSTIFY_CENTER) {
            entryRect.x = ui::clampedDiff(rect.x, value / 2);
            entryRect.x2 = ui::clampedSum(entryRect.x, value);
        } else if (justify & JUSTIFY_RIGHT) {
            entryRect.x2 = rect.x;
            entryRect.x = ui::clampedDiff(rect.x, value);
        } else {
            entryRect.x = rect.x;
            entryRect.x2 = ui::clampedSum(rect.x, value);
        }
        return;
    }
    if (ui::equalNoCase(key, "entryrecty")) {
        if (!intAfterEquals(parser, "entryrecty = val", &value)) return;
        entryRect.y = rect.y;
        entryRect.y2 = ui::clampedSum(rect.y, value);
        return;
    }
    if (ui::equalNoCase(key, "endhidecursor")) {
        if (ui::expectEquals(parser, "endhidecursor = BOOLEAN")) endHideCursor = _parseBoolean(parser);
        return;
    }
    if (parser->ParamEqualsBoolean(key, "acceptonenter", &acceptOnEnter)) return;
    uiTextWidget::_parseParams(parser, key);
}

// ---- entry ------------------------------------------------------------------------------------------

void uiEntryWidget::reset() {
    length = 0;
    accepted = false;
    for (unsigned int& code : text)
        code = 0;
}

bool uiEntryWidget::isAccepted() const {
    return accepted;
}

// The new sprite is created before the old one is given back, so setting the same cursor again does not
// make the graphics service unload and reload it.
bool uiEntryWidget::setCursor(const char* spriteName) {
    cursorFrame = 0;
    cursorTimer = 0;
    const int previous = cursor;
    cursor = g_gfx ? g_gfx->createSprite(spriteName) : -1;
    _releaseSprite(previous);
    return cursor != -1;
}

int uiEntryWidget::_capacity() const {
    return entryWidth < 0 ? 0 : entryWidth > kMaxCharacters ? kMaxCharacters : entryWidth;
}

void uiEntryWidget::_print(int printSet, const unsigned int* codes) {
    uiTextWidget::_print(printSet, codes);
    const int limit = _capacity();
    length = 0;
    while (text[length] && length < limit)
        ++length;
    for (int i = length; i < kTextCapacity; ++i)
        text[i] = 0;
}

bool uiEntryWidget::testBounds(int px, int py) {
    return entryRect.x <= px && px < entryRect.x2 && entryRect.y <= py && py < entryRect.y2;
}

int uiEntryWidget::getWidth() const {
    return ui::clampedDiff(entryRect.x2, entryRect.x);
}

int uiEntryWidget::getHeight() const {
    return ui::clampedDiff(entryRect.y2, entryRect.y);
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiEntryWidget::_gainFocus() {
    cursorTimer = 0;
    cursorFrame = 0;
}

// ---- frame ------------------------------------------------------------------------------------------

void uiEntryWidget::_drawCursor(int x, int y) {
    int left = 0, top = 0, right = 0, bottom = 0;
    g_gfx->getTextRect(font, justify, rect.x, rect.y, text, &left, &top, &right, &bottom);
    if (padding != 0) {
        const int shift = ui::clampedProduct(padding, length);
        left = ui::clampedSum(left, shift);
        right = ui::clampedSum(right, shift);
    }
    cursorTimer += s_iDeltaTime;
    if (cursorTimer > cursorRate) {
        cursorTimer = 0;
        if (++cursorFrame >= g_gfx->getSpriteFrameCount(cursor, 0)) cursorFrame = 0;
    }
    int px;
    if (justify == JUSTIFY_LEFT || (justify == JUSTIFY_CENTER && right != left))
        px = ui::clampedSum(x, right);
    else if (justify == JUSTIFY_CENTER)
        px = ui::clampedDiff(ui::clampedSum(x, right), g_gfx->getSpriteWidth(cursor) / 2);
    else
        return;
    g_gfx->blt(depth, cursor, px, ui::clampedSum(y, rect.y), 0, cursorFrame, 255);
}

void uiEntryWidget::_render(int x, int y) {
    const bool full = length >= _capacity();
    if (cursor != -1 && g_gfx && (flags & WF_INPUT_FOCUS) && !(endHideCursor && full)) _drawCursor(x, y);
    uiTextWidget::_render(x, y);
}

// ---- input ------------------------------------------------------------------------------------------

bool uiEntryWidget::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (accepted || handled) return false;
    if (kind == UIE_KEY_DOWN) {
        if (key == KEY_ENTER || key == KEY_PAD_ENTER) {
            if (acceptOnEnter) accepted = true;
            return uiWidget::_inputEvent(UIE_KEY_DOWN, x, y, key, buttonDown, false);
        }
        if (key == KEY_BACKSPACE) {
            if (length > 0) text[--length] = 0;
            return true;
        }
        return false;
    }
    return kind == UIE_CHAR && _typeChar(key);
}

bool uiEntryWidget::_typeChar(int key) {
    const signed char byte = static_cast<signed char>(key & 0xFF);
    if ((byte >= 7 && byte <= 13) || byte == '\\') return false;
    if (length >= _capacity()) return false;
    unsigned int code = static_cast<unsigned int>(key) & 0xFFFF;
    // Code 0 would end the text and leave the count behind it.
    if (code == 0) return false;
    if ((code >= 'a' && code <= 'z') || (code >= 0xE0 && code <= 0xFF)) code -= 0x20;
    if (!g_gfx || !g_gfx->testFontChar(font, code)) return false;
    text[length++] = code;
    text[length] = 0;
    return true;
}
