// uiRadioButton: selection through the enclosing group on release, and drawing with the selected look.
#include "uiradiobutton.h"
#include "gfxsubsystem.h"
#include "parser.h"
#include "uiradiogroup.h"

UI_DEFINE_WIDGET(uiRadioButton, uiButton, "uiradiobutton.h")

// ---- description keys -------------------------------------------------------------------------------

void uiRadioButton::_parseParams(Parser* parser, char* key) {
    if (!parser->ParamEqualsInt32(key, "value", &value)) uiButton::_parseParams(parser, key);
}

// ---- frame ------------------------------------------------------------------------------------------

// Draws from the state directly: selection shows without restarting the button's animation.
void uiRadioButton::_render(int x, int y) {
    if (spriteId == -1 || !g_gfx) return;
    const int a = _stateAnim(selected || pressed, false);
    if (a != -1) g_gfx->blt(depth, spriteId, x + rect.x, y + rect.y, a, frame, alpha);
    if (psysInstance != -1) g_gfx->psemit(depth, psysInstance, 1.0f);
}

// ---- input ------------------------------------------------------------------------------------------

bool uiRadioButton::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    // Selected before the click handling, so that mouseUpCb already sees the new selection.
    if (!handled && kind == UIE_MOUSE_UP && testBounds(x, y)) {
        for (uiWidget* w = getParent(); w; w = w->getParent())
            if (w->isType("uiRadioGroup")) {
                static_cast<uiRadioGroup*>(w)->setValue(value);
                break;
            }
    }
    return uiButton::_inputEvent(kind, x, y, key, buttonDown, handled);
}
