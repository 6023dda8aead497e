// uiTextWidget: printing through the string table, fonts, justified and padded drawing, alpha fade.
#include "uitextwidget.h"
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include "core/uialphafade.h"
#include "core/uidescvalue.h"
#include "core/uinumeric.h"
#include "core/uiutf8.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"
#include "stringtable.h"
#include "text/uipaddedtext.h"

UI_DEFINE_WIDGET(uiTextWidget, uiWidget, "uitextwidget.h")

namespace {

constexpr int kFormatBuffer = 768;
constexpr int kFormatWritten = 762; // bytes of formatted text kept
constexpr int kDescriptionCodes = 256;

// The string table's text for `key`; the key itself without a table, for an empty key, or when the
// table answers nothing.
const char* translated(const char* key) {
    if (!g_stringTblPtr || key[0] == '\0') return key;
    const unsigned char* value = g_stringTblPtr->translate(key);
    return value ? reinterpret_cast<const char*>(value) : key;
}

void decode(const char* utf8, unsigned int* codes, int capacity) {
    ui::decodeUtf8(reinterpret_cast<const unsigned char*>(utf8), codes, static_cast<std::size_t>(capacity));
}

} // namespace

uiTextWidget::uiTextWidget() = default;
uiTextWidget::~uiTextWidget() = default;

uiTextWidget::uiTextWidget(const uiTextWidget& other) : uiWidget() {
    _copyText(other);
}

uiTextWidget& uiTextWidget::operator=(const uiTextWidget& other) {
    if (this != &other) _copyText(other);
    return *this;
}

// The copy takes a reference of its own to the shared font handle: either widget may later set another
// font, which gives its own reference back, without closing the other's.
void uiTextWidget::_copyText(const uiTextWidget& other) {
    _copyWidgetFields(other);
    if (font != other.font) uiTextWidget::setFont(other.font);
    justify = other.justify;
    set = other.set;
    std::memcpy(text, other.text, sizeof text);
    padding = other.padding;
    alpha = other.alpha;
    startAlpha = other.startAlpha;
    targetAlpha = other.targetAlpha;
    fadeTime = other.fadeTime;
    fadeElapsed = other.fadeElapsed;
    fadeDelay = other.fadeDelay;
}

// ---- description keys -------------------------------------------------------------------------------

void uiTextWidget::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "font")) {
        const char* fontName = ui::nameAfterEquals(parser, "font = \"val\"");
        if (fontName && !setFont(fontName))
            Logger::log(Logger::kError, "...failed to create font: %s for %s\f", fontName, name);
        return;
    }
    if (ui::equalNoCase(key, "justify")) {
        const char* value = parser->GetEqualsToken() ? parser->GetToken(" ") : nullptr;
        if (value && ui::equalNoCase(value, "RIGHT"))
            justify |= JUSTIFY_RIGHT;
        else if (value && ui::equalNoCase(value, "CENTER"))
            justify |= JUSTIFY_CENTER;
        else if (!value || !ui::equalNoCase(value, "LEFT"))
            ui::logExpected("justify = \"val\"");
        return;
    }
    if (parser->ParamEqualsInt32(key, "set", &set)) return;
    if (ui::equalNoCase(key, "text")) {
        if (!ui::expectEquals(parser, "text = val")) return;
        const char* value = parser->GetString();
        if (value[0] == '\0') return;
        unsigned int codes[kDescriptionCodes];
        decode(translated(value), codes, kDescriptionCodes);
        _print(set, codes);
        return;
    }
    if (parser->ParamEqualsInt32(key, "padding", &padding)) return;
    uiWidget::_parseParams(parser, key);
}

// ---- text -------------------------------------------------------------------------------------------

void uiTextWidget::print(int printSet, const char* format, ...) {
    char buffer[kFormatBuffer];
    va_list args;
    va_start(args, format);
    std::vsnprintf(buffer, kFormatWritten + 1, translated(format ? format : ""), args);
    va_end(args);
    unsigned int codes[kTextCapacity];
    decode(buffer, codes, kTextCapacity);
    _print(printSet, codes);
}

void uiTextWidget::_print(int printSet, const unsigned int* codes) {
    set = printSet;
    int n = 0;
    for (; codes && n < kTextCapacity && codes[n]; ++n)
        text[n] = codes[n];
    for (int i = n; i < kTextCapacity; ++i)
        text[i] = 0;
    text[kTextCapacity - 1] = 0;
}

// ---- font and layout --------------------------------------------------------------------------------

bool uiTextWidget::setFont(const char* fontName) {
    if (font != -1 && g_gfx) g_gfx->releaseFont(font);
    font = g_gfx ? g_gfx->createFont(fontName) : -1;
    return font != -1;
}

bool uiTextWidget::setFont(int id) {
    if (font != id) {
        if (font != -1 && g_gfx) g_gfx->releaseFont(font);
        font = -1; // never draw with a handle given back, whatever the lookup below finds
    }
    const char* fontName = g_gfx ? g_gfx->getFontName(id) : nullptr;
    if (!fontName || fontName[0] == '\0') return false;
    font = g_gfx->createFont(fontName);
    return true;
}

void uiTextWidget::setJustify(unsigned int value) {
    justify = value;
}

namespace {

struct PaddedExtent {
    _uiRect_s* rect;
    bool any;
};

void growRect(const ui::PaddedChar& c, void* context) {
    PaddedExtent* e = static_cast<PaddedExtent*>(context);
    if (!e->any || c.left < e->rect->x) e->rect->x = c.left;
    if (!e->any || c.right > e->rect->x2) e->rect->x2 = c.right;
    e->any = true;
}

} // namespace

// A padded text spans the boxes of its characters (nothing for an empty text), one font height high.
void uiTextWidget::getTextRect(_uiRect_s* r) const {
    *r = _uiRect_s{0, 0, 0, 0};
    if (!g_gfx) return;
    if (padding == 0) {
        g_gfx->getTextRect(font, justify, 0, 0, text, &r->x, &r->y, &r->x2, &r->y2);
        return;
    }
    PaddedExtent extent{r, false};
    ui::layoutPaddedText(font, text, padding, justify, &growRect, &extent);
    r->y2 = g_gfx->getFontHeight(font);
}

int uiTextWidget::getWidth() const {
    _uiRect_s r;
    getTextRect(&r);
    return ui::clampedDiff(r.x2, r.x);
}

int uiTextWidget::getHeight() const {
    _uiRect_s r;
    getTextRect(&r);
    return ui::clampedDiff(r.y2, r.y);
}

// ---- alpha ------------------------------------------------------------------------------------------

void uiTextWidget::setAlpha(unsigned char value, unsigned int time, unsigned int delay, bool recurse) {
    if (flags & WF_IGNORE_ALPHA) return;
    ui::startAlphaFade(*this, value, time, delay);
    uiWidget::setAlpha(value, time, delay, recurse);
}

void uiTextWidget::_lerpToTargetAlpha() {
    ui::stepAlphaFade(*this, s_iDeltaTime);
}

// ---- frame ------------------------------------------------------------------------------------------

void uiTextWidget::_update(int x, int y) {
    if (font != -1) _lerpToTargetAlpha();
}

namespace {

struct PaddedDraw {
    const uiTextWidget* widget;
    int x, y;
};

void drawPaddedChar(const ui::PaddedChar& c, void* context) {
    const PaddedDraw* d = static_cast<const PaddedDraw*>(context);
    const unsigned int one[2] = {c.code, 0};
    g_gfx->print(d->widget->depth, d->widget->font, d->widget->set, c.justify, ui::clampedSum(d->x, c.anchor),
                 d->y, -1, d->widget->alpha, one);
}

} // namespace

void uiTextWidget::_render(int x, int y) {
    if (font == -1 || !g_gfx) return;
    const int px = ui::clampedSum(x, rect.x), py = ui::clampedSum(y, rect.y);
    if (padding == 0) {
        g_gfx->print(depth, font, set, justify, px, py, -1, alpha, text);
        return;
    }
    PaddedDraw draw{this, px, py};
    ui::layoutPaddedText(font, text, padding, justify, &drawPaddedChar, &draw);
}

// ---- input ------------------------------------------------------------------------------------------

bool uiTextWidget::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    return false;
}
