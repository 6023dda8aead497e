// uiAnimWidget: a visual widget with in and out animation records of its own (the same records as an
// animated dialog's, without sub-animations). Reached by its type name "uiAnimWidget" (no public header).
//
// States (uistates.h): hidden, idle, entering, exiting; the end of the out animation is hidden, which
// deactivates the widget and makes it invisible at its next render. A widget that was never entered or
// exited starts idle, showing its in record as finished (a SpriteMask at its target alpha) where the
// description put it. It draws the mask tiles of its current record, never its own sprite.
//
// Description keys (besides those of uiVisualWidget); sub-keys in docs/description-format.md:
//   AnimIn <sub-key> ...    the in record
//   AnimOut <sub-key> ...   the out record
#pragma once
#include "runtime/uianimrecord.h"
#include "uistates.h"
#include "uivisualwidget.h"

class uiAnimWidget : public uiVisualWidget {
    UI_DECLARE_WIDGET(uiAnimWidget)

public:
    uiAnimWidget() = default;
    ~uiAnimWidget() override;

    // Unlike the widget base, passes on to children with overridden visibility too.
    void setVisible(bool visible, bool recurse) override;

    virtual void enter();
    virtual void exit();
    virtual void hide();
    virtual void idle();
    virtual void setAnimSound(bool out, const char* name);
    virtual int getLastState() const { return m_lastState; }

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _initialize() override;
    void _render(int x, int y) override;
    void _update(int x, int y) override;

private:
    void setState(int state);
    void start(int state, const _uiAnimData_s& rec);

    _uiAnimData_s m_in, m_out;
    unsigned int m_elapsed = 0;
    int m_startX = 0, m_startY = 0;
    int m_state = UIS_IDLE;
    int m_lastState = UIS_HIDDEN;
};
