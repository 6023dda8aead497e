#include "assetnames.h"
#include "gfxsubsystem.h"
#include "uidigitalbanner.h"
#include "uientrywidget.h"
#include "uivisualwidget.h"
#include "widgetinfo.h"

namespace devtools {
namespace {

void add(std::set<AssetName>& out, uiAssetKind kind, const char* name) {
    if (name && *name) out.insert({kind, name});
}

const char* fontName(int font) {
    return g_gfx && font >= 0 ? g_gfx->getFontName(font) : nullptr;
}

} // namespace

std::set<AssetName> assetNames(uiWidget* root) {
    std::set<AssetName> out;
    walk(root, [&](uiWidget* w, int) {
        if (w->isType("uiVisualWidget"))
            add(out, UIASSET_SPRITE, static_cast<uiVisualWidget*>(w)->spriteName);
        if (w->isType("uiEntryWidget") && g_gfx && static_cast<uiEntryWidget*>(w)->cursor >= 0)
            add(out, UIASSET_SPRITE, g_gfx->getSpriteName(static_cast<uiEntryWidget*>(w)->cursor));
        if (w->isType("uiTextWidget")) add(out, UIASSET_FONT, fontName(static_cast<uiTextWidget*>(w)->font));
        if (w->isType("uiDigitalBanner"))
            add(out, UIASSET_FONT, fontName(static_cast<uiDigitalBanner*>(w)->font));
    });
    return out;
}

} // namespace devtools
