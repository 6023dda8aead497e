// The animation record shared by animated dialogs and animated widgets: one in and one out record per
// animated widget, each a style, a duration, an end position, fade and mask settings and a start sound.
#pragma once
#include "uiwidget.h"

class Parser;

enum e_uiAnimStyle {
    UIANIM_NONE = 0,
    UIANIM_TRIVIAL = 1,
    UIANIM_BEZIERLERP = 2,
    UIANIM_ALPHAFADE = 3,
    UIANIM_SPRITEMASK = 4,
    UIANIM_HIDDEN = 5,
    UIANIM_ALPHAFADE_BEZIERLERP = 6,
};

struct _uiAnimData_s {
    int style = UIANIM_NONE;
    unsigned int time = 0;                // ms
    int locX = 0, locY = 0;               // where the animation ends
    float bezier1 = 0.0f, bezier2 = 0.0f; // inner control points, as fractions of the way to loc
    int alphaStart = 0, alphaTarget = 0;
    int sprite = -1; // mask sprite
    int spriteDepth = 0;
    int spriteVertCount = 0, spriteHorzCount = 0;
    int maskAlpha = 0; // 0 draws no mask
    char sound[128] = {};
};

namespace uiAnim {

// Reads one record line ("style = BezierLerp", "Time = 500", ...), the sub-key already taken from the
// line. `release` gives back a mask sprite that a second "sprite" line replaces.
void parseKey(Parser* parser, const char* subKey, _uiAnimData_s& rec, void (*release)(int sprite));

void playSound(const _uiAnimData_s& rec);

// One frame of a record on `w`, which started at (startX, startY); returns the new elapsed time. `owner`
// is true when the record is `w`'s own rather than a sub-animation's: the Hidden style then only hides
// `w`, so that its update, which drives the animation, keeps running.
unsigned int step(unsigned int elapsed, _uiAnimData_s& rec, uiWidget* w, int startX, int startY, bool owner);

// Places `w` at the record's end position (keeping its size) and settles the mask.
void finish(_uiAnimData_s& rec, uiWidget* w);

// Gives a SpriteMask record the mask alpha it ends with, leaving every widget where it is.
void settleMask(_uiAnimData_s& rec);

// Draws the record's mask tiles over `w`, whose rectangle is offset by (offsetX, offsetY).
void drawMask(const _uiAnimData_s& rec, const uiWidget* w, int offsetX, int offsetY);

} // namespace uiAnim
