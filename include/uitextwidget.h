// uiTextWidget: one line of text in a font of the graphics service.
//
// Texts come from a printf-style format (print), from a description's `text` key, or as 32-bit codes
// (_print). 8-bit texts are UTF-8 and are looked up in the string table (g_stringTblPtr) first: the
// text itself is the key. The widget keeps at most 127 characters; a formatted text is cut at 762 bytes
// before it is decoded. It draws at its top-left corner with its justification, either as one string or,
// with a padding, character by character; it fades its own alpha over time and takes no input. Drawing
// and fading wait until the widget has a font.
//
// Justification: 0 left, JUSTIFY_RIGHT (1) and JUSTIFY_CENTER (2) as bits. Padded text is laid out
// character by character: left and right as documented in docs/decisions.md, every other value centred.
//
// Description keys (then those of uiWidget):
//   font = "name"          the font, created by name; logs when the graphics service has none
//   justify = LEFT | RIGHT | CENTER   adds the bit to the justification (LEFT adds nothing)
//   set = int              print set handed to the graphics service with every draw
//   text = "string"        the text, translated and decoded; an empty string leaves the text as it is
//   padding = int          pixels added to each character's step; 0 draws the text as one string
#pragma once
#include "uiwidget.h"

class UI_API uiTextWidget : public uiWidget {
    UI_DECLARE_WIDGET(uiTextWidget)

public:
    // Justification bits of `justify` (RIGHT and CENTER together give 3).
    static constexpr unsigned int JUSTIFY_LEFT = 0;
    static constexpr unsigned int JUSTIFY_RIGHT = 1;
    static constexpr unsigned int JUSTIFY_CENTER = 2;
    static constexpr int kTextCapacity = 128; // 127 characters and the ending 0

    uiTextWidget();
    // A copy takes the text, the settings and the widget fields but not the tree links, and shares the
    // font handle with a reference of its own.
    uiTextWidget(const uiTextWidget& other);
    uiTextWidget& operator=(const uiTextWidget& other);
    // The font handle is not released here: it belongs to the graphics service's font cache.
    ~uiTextWidget() override;

    int getWidth() const override;
    int getHeight() const override;
    void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) override;

    // Added virtual operations, in slot order.
    virtual bool setFont(int id);
    virtual bool setFont(const char* name);
    virtual void setJustify(unsigned int value);

    // The text from a printf-style format, translated first (the format is the string table's key).
    void print(int printSet, const char* format, ...);
    const unsigned int* getText() const { return text; }
    // The text's extent relative to its origin (the widget's top-left corner).
    void getTextRect(_uiRect_s* r) const;

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _update(int x, int y) override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

    // Every new text ends here, whatever its source.
    virtual void _print(int printSet, const unsigned int* codes);
    virtual void _lerpToTargetAlpha();

private:
    void _copyText(const uiTextWidget& other);

public:
    // Fields, in declared order.
    int font = -1; // the graphics service's handle; -1: nothing is drawn
    unsigned int justify = JUSTIFY_LEFT;
    int set = 0;
    unsigned int text[kTextCapacity] = {};
    int padding = 0;
    unsigned char alpha = 255;
    unsigned char startAlpha = 255;
    unsigned char targetAlpha = 255;
    unsigned int fadeTime = 0;
    unsigned int fadeElapsed = 0;
    unsigned int fadeDelay = 0;
};
