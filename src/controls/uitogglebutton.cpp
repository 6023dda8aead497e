// uiToggleButton: the second sprite, the on/off state and its flip on consumed input.
#include "uitogglebutton.h"
#include <cctype>
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"
#include "core/uidescvalue.h"

UI_DEFINE_WIDGET(uiToggleButton, uiButton, "uitogglebutton.h")

uiToggleButton::~uiToggleButton() {
    _releaseSprite(sprite2);
}

bool uiToggleButton::setSprite2(const char* file) {
    ui::copyName(sprite2Name, file);
    return true;
}

void uiToggleButton::setToggle(bool on) {
    toggled = on ? 1 : 0;
}

bool uiToggleButton::getToggle() const {
    return toggled != 0;
}

void uiToggleButton::toggle() {
    setToggle(!getToggle());
}

// ---- description keys -------------------------------------------------------------------------------

void uiToggleButton::_parseParams(Parser* parser, char* key) {
    if (!ui::equalNoCase(key, "sprite2")) return uiButton::_parseParams(parser, key);

    static const char* const kForm = "sprite2 = \"val\"";
    const char* token = ui::nameAfterEquals(parser, kForm);
    if (!token) return;
    // Only the first word of the value counts, cut to the length a sprite name can have.
    while (std::isspace(static_cast<unsigned char>(*token)))
        ++token;
    char word[sizeof sprite2Name];
    std::size_t length = 0;
    while (token[length] && !std::isspace(static_cast<unsigned char>(token[length])) &&
           length + 1 < sizeof word)
        ++length;
    if (length == 0) {
        ui::logExpected(kForm);
        return;
    }
    ui::copyName(word, length + 1, token);
    if (!setSprite2(word))
        Logger::log(Logger::kError, "...failed to create sprite2: %s for %s\f", word, name);
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiToggleButton::_activate() {
    if (sprite2 == -1 && sprite2Name[0] && g_gfx) sprite2 = g_gfx->createSprite(sprite2Name);
    uiButton::_activate();
}

void uiToggleButton::_deactivate() {
    uiButton::_deactivate();
    if (!s_dynamicLoading) return;
    _releaseSprite(sprite2);
    sprite2 = -1;
}

// ---- frame ------------------------------------------------------------------------------------------

void uiToggleButton::_render(int x, int y) {
    if (!toggled) return uiButton::_render(x, y);
    const int normal = spriteId;
    spriteId = sprite2;
    uiButton::_render(x, y);
    spriteId = normal;
}

// ---- input ------------------------------------------------------------------------------------------

bool uiToggleButton::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (!uiButton::_inputEvent(kind, x, y, key, buttonDown, handled)) return false;
    toggled = toggled ? 0 : 1;
    return true;
}
