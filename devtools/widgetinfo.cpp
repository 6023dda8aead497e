#include "widgetinfo.h"
#include <cstdio>
#include "uibutton.h"
#include "uiparticlesystem.h"
#include "uisubsystem.h"

namespace devtools {
namespace {

struct Bit {
    unsigned int bit;
    const char* name;
};
constexpr Bit kWidgetBits[] = {{WF_ACTIVE, "active"},
                               {WF_VISIBLE, "visible"},
                               {WF_INPUT_FOCUS, "input-focus"},
                               {WF_ALPHA_TEST, "alpha-test"},
                               {WF_ROOT_COORDS, "root-coords"},
                               {WF_IGNORE_ALPHA, "ignore-alpha"},
                               {WF_OVERRIDE_ACTIVE, "override-active"},
                               {WF_OVERRIDE_VISIBLE, "override-visible"},
                               {WF_OVERRIDE_INPUT_FOCUS, "override-input-focus"}};
constexpr Bit kButtonBits[] = {
    {UIB_PRESSED, "has-pressed-anim"}, {UIB_HOVER, "has-hover-anim"}, {UIB_DONTDRAWIDLE, "dont-draw-idle"}};
constexpr Bit kParticleBits[] = {{UIP_DONTUPDATE, "dont-update"}, {UIP_DONTRENDER, "dont-render"}};

template <size_t N> void name(unsigned int& flags, const Bit (&bits)[N], std::string& out) {
    for (const Bit& b : bits)
        if (flags & b.bit) {
            out += out.empty() ? "" : " ";
            out += b.name;
            flags &= ~b.bit;
        }
}

} // namespace

std::string widgetPath(uiWidget* w) {
    std::string path = w->name;
    for (uiWidget* p = w->getParent(); p; p = p->getParent())
        path = std::string(p->name) + "." + path;
    return path;
}

bool isWithin(uiWidget* w, const uiWidget* root) {
    for (; w; w = w->getParent())
        if (w == root) return true;
    return false;
}

_uiRect_s screenRect(uiWidget* w) {
    int x, y;
    w->getBasisCoords(&x, &y);
    return {x + w->rect.x, y + w->rect.y, x + w->rect.x2, y + w->rect.y2};
}

std::string flagNames(uiWidget* w) {
    unsigned int flags = w->getWidgetFlags();
    std::string out;
    name(flags, kWidgetBits, out);
    if (w->isType("uiButton")) {
        name(flags, kButtonBits, out);
        auto* b = static_cast<uiButton*>(w);
        if (b->isHovering()) out += " hover";
        // A pressed button holds the pointer from the top of the input-focus stack.
        if (g_ui && g_ui->getInputFocusWidget() == w) out += " pressed";
    }
    if (w->isType("uiParticleSystem")) name(flags, kParticleBits, out);
    if (flags) {
        char rest[16];
        std::snprintf(rest, sizeof rest, "%s0x%x", out.empty() ? "" : " ", flags);
        out += rest;
    }
    return out;
}

} // namespace devtools
