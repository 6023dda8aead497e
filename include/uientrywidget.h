// uiEntryWidget: a one-line text entry field.
//
// While it has input focus it takes typed characters (UIE_CHAR) as capitals, up to its width in
// characters (at most 127), deletes the last one with backspace and is accepted by Enter (UIE_KEY_DOWN
// KEY_ENTER or KEY_PAD_ENTER, uikeys.h). Once accepted it ignores all input until reset(). Refused: control
// characters 7 to 13, the backslash, code 0, characters the font lacks, and anything once the field is
// full; a refused event is reported as not used. A printed or described text is cut to the width too.
// A blinking cursor sprite (animation 0, one frame per cursorRate ms) stands at the end of the text while
// the widget has input focus. Hit tests and the widget's size use the entry rectangle, not the text.
//
// Description keys (then those of uiTextWidget):
//   entrywidth = int       most characters taken (10); above 127 acts as 127
//   cursorrate = int       milliseconds per cursor frame (500)
//   cursor = "sprite"      the cursor sprite; logs when the graphics service has none
//   entryrectx = int       width of the entry rectangle, placed by x and the justification read so far
//   entryrecty = int       height of the entry rectangle, from y
//   endhidecursor = BOOLEAN   hide the cursor once the field is full
//   acceptonenter = BOOLEAN   Enter accepts the entry (true)
// Give x, y and justify before entryrectx and entryrecty, and entrywidth before text.
#pragma once
#include "uitextwidget.h"

class UI_API uiEntryWidget : public uiTextWidget {
    UI_DECLARE_WIDGET(uiEntryWidget)

public:
    uiEntryWidget();
    // A copy is a text widget's copy with the entry's state, and a cursor sprite of its own.
    uiEntryWidget(const uiEntryWidget& other);
    uiEntryWidget& operator=(const uiEntryWidget& other);
    ~uiEntryWidget() override; // gives the cursor sprite back

    bool testBounds(int x, int y) override;
    int getWidth() const override;
    int getHeight() const override;

    // Added virtual operations, in slot order.
    virtual void reset();
    virtual bool isAccepted() const;
    virtual bool setCursor(const char* spriteName);

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _gainFocus() override;
    void _render(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;
    void _print(int printSet, const unsigned int* codes) override;

private:
    void _copyEntry(const uiEntryWidget& other);
    int _capacity() const; // the width limit in force: entryWidth within 0..127
    bool _typeChar(int key);
    void _drawCursor(int x, int y);

public:
    // Fields, in declared order.
    int length = 0; // characters in the text
    int entryWidth = 10;
    bool accepted = false;
    int cursor = -1; // sprite handle; -1: no cursor
    int cursorFrame = 0;
    unsigned int cursorRate = 500;
    unsigned int cursorTimer = 0;
    _uiRect_s entryRect = {0, 0, 0, 0};
    bool endHideCursor = false;
    bool acceptOnEnter = true;
};
