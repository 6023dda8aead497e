// Animation records: description sub-keys, the per-frame step of each style, finishing and mask drawing.
#include "runtime/uianimrecord.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "parser.h"
#include "core/uidescvalue.h"
#include "soundsubsystem.h"

namespace {

const char* const kStyleNames[] = {
    "None", "Trivial", "BezierLerp", "AlphaFade", "SpriteMask", "Hidden", "AlphaFadeWithBezierLerp"};

double progress(const _uiAnimData_s& rec, unsigned int elapsed) {
    return rec.time ? static_cast<double>(elapsed) / rec.time : 1.0;
}

void parseStyle(Parser* parser, _uiAnimData_s& rec) {
    const char* styleName = ui::nameAfterEquals(parser, "style = \"val\"");
    if (!styleName) return;
    for (int style = 0; style < static_cast<int>(sizeof kStyleNames / sizeof *kStyleNames); ++style) {
        if (ui::equalNoCase(styleName, kStyleNames[style])) {
            rec.style = style;
            return;
        }
    }
    Logger::log(Logger::kError, "...anim style type \"^C00FF00%s^c\" unknown\f", styleName);
}

// Cubic Bezier from start to loc with the inner points at the control fractions, in power form.
int bezier(int start, int loc, float control1, float control2, double t) {
    const int d = loc - start;
    const float p0 = static_cast<float>(start);
    const float p1 = p0 + d * control1;
    const float p2 = p0 + d * control2;
    const float c = 3.0f * (p1 - p0);
    const float b = 3.0f * (p2 - p1) - c;
    const float a = d - c - b;
    // Far past the end of an animation the curve leaves the int range (the finish of the same step puts
    // the widget in place); the conversion saturates, and NaN controls give 0.
    return ui::truncToInt(((a * t + b) * t + c) * t + p0);
}

void moveAlongCurve(const _uiAnimData_s& rec, uiWidget* w, unsigned int elapsed, int startX, int startY) {
    const double t = progress(rec, elapsed);
    if (startX != rec.locX) {
        const int x = bezier(startX, rec.locX, rec.bezier1, rec.bezier2, t);
        w->rect.x2 = x + w->getWidth();
        w->rect.x = x;
    }
    if (startY != rec.locY) {
        const int y = bezier(startY, rec.locY, rec.bezier1, rec.bezier2, t);
        w->rect.y2 = y + w->getHeight();
        w->rect.y = y;
    }
}

// The fade itself runs in the widgets; the record only starts it on the first step.
void startFade(const _uiAnimData_s& rec, uiWidget* w, unsigned int elapsed) {
    if (elapsed != 0) return;
    w->setAlpha(static_cast<unsigned char>(rec.alphaStart), 0, 0, true);
    w->setAlpha(static_cast<unsigned char>(rec.alphaTarget), rec.time, 0, true);
}

bool locParam(Parser* parser, const char* subKey, _uiAnimData_s& rec) {
    if (!parser->ParamEqualsInt32_2(subKey, "Loc", &rec.locX, &rec.locY)) return false;
    rec.locX = ui::coordInRange(parser, "Loc", rec.locX);
    rec.locY = ui::coordInRange(parser, "Loc", rec.locY);
    return true;
}

// The numeric sub-keys; the parser reports a malformed value itself.
bool parseNumber(Parser* parser, const char* subKey, _uiAnimData_s& rec) {
    return parser->ParamEqualsUInt32(subKey, "Time", &rec.time) ||
           parser->ParamEqualsFloat32_2(subKey, "BezierControls", &rec.bezier1, &rec.bezier2) ||
           locParam(parser, subKey, rec) ||
           parser->ParamEqualsInt32(subKey, "AlphaTarget", &rec.alphaTarget) ||
           parser->ParamEqualsInt32(subKey, "AlphaStart", &rec.alphaStart) ||
           parser->ParamEqualsInt32(subKey, "SpriteVertCount", &rec.spriteVertCount) ||
           parser->ParamEqualsInt32(subKey, "SpriteHorzCount", &rec.spriteHorzCount);
}

int clampAlpha(double v) {
    return v < 0.0 ? 0 : v > 255.0 ? 255 : static_cast<int>(v);
}

} // namespace

namespace uiAnim {

void parseKey(Parser* parser, const char* subKey, _uiAnimData_s& rec, void (*release)(int sprite)) {
    if (!subKey) subKey = "";
    if (ui::equalNoCase(subKey, "style")) {
        parseStyle(parser, rec);
    } else if (ui::equalNoCase(subKey, "sprite")) {
        if (const char* spriteName = ui::nameAfterEquals(parser, "sprite = val")) {
            release(rec.sprite);
            rec.sprite = g_gfx ? g_gfx->createSprite(spriteName) : -1;
        }
    } else if (ui::equalNoCase(subKey, "spritedepth")) {
        if (const char* depthName = ui::nameAfterEquals(parser, "spritedepth = val"))
            rec.spriteDepth = uiWidget::s_getDepthValue(depthName);
    } else if (ui::equalNoCase(subKey, "sound")) {
        if (const char* soundName = ui::nameAfterEquals(parser, "sound = val"))
            ui::copyName(rec.sound, soundName);
    } else if (!parseNumber(parser, subKey, rec)) {
        Logger::log(Logger::kError, "...unknown command for anim: \"^C00FF00%s^c\"\f", subKey);
    }
}

void playSound(const _uiAnimData_s& rec) {
    if (rec.sound[0] && g_sound) g_sound->playSound(SOUND_TYPE_UI, rec.sound, false, false);
}

unsigned int step(unsigned int elapsed, _uiAnimData_s& rec, uiWidget* w, int startX, int startY, bool owner) {
    switch (rec.style) {
    case UIANIM_BEZIERLERP:
        moveAlongCurve(rec, w, elapsed, startX, startY);
        break;
    case UIANIM_ALPHAFADE:
        startFade(rec, w, elapsed);
        break;
    case UIANIM_SPRITEMASK: {
        const double t = progress(rec, elapsed);
        rec.maskAlpha = clampAlpha((1.0 - t) * rec.alphaStart + rec.alphaTarget * t);
        break;
    }
    case UIANIM_HIDDEN:
        if (owner)
            w->setVisible(false, true);
        else
            w->setWidgetStates(false, false, false, true);
        break;
    case UIANIM_ALPHAFADE_BEZIERLERP:
        startFade(rec, w, elapsed);
        moveAlongCurve(rec, w, elapsed, startX, startY);
        break;
    default:
        break;
    }
    const unsigned int next = elapsed + uiWidget::s_iDeltaTime;
    if (next >= rec.time) finish(rec, w);
    return next;
}

void finish(_uiAnimData_s& rec, uiWidget* w) {
    const int width = w->getWidth();
    const int height = w->getHeight();
    w->rect.x2 = rec.locX + width;
    w->rect.y2 = rec.locY + height;
    w->rect.x = rec.locX;
    w->rect.y = rec.locY;
    settleMask(rec);
}

void settleMask(_uiAnimData_s& rec) {
    if (rec.style == UIANIM_SPRITEMASK) rec.maskAlpha = clampAlpha(rec.alphaTarget);
}

void drawMask(const _uiAnimData_s& rec, const uiWidget* w, int offsetX, int offsetY) {
    if (!w || rec.sprite == -1 || rec.maskAlpha == 0 || !g_gfx) return;
    const int width = g_gfx->getSpriteWidth(rec.sprite);
    const int height = g_gfx->getSpriteHeight(rec.sprite);
    for (int row = 0; row < rec.spriteVertCount; ++row)
        for (int column = 0; column < rec.spriteHorzCount; ++column)
            g_gfx->blt(rec.spriteDepth, rec.sprite, w->rect.x + offsetX + column * width,
                       w->rect.y + offsetY + row * height, 0, 0, rec.maskAlpha);
}

} // namespace uiAnim
