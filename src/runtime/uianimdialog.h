// uiAnimDialog: a dialog that slides, fades or is masked in when entered and out when exited, together
// with sub-animations of widgets below it. Reached by its type name "uiAnimDialog" (no public header).
//
// States (uistates.h): entering and exiting run the in or out record every update; the end of the in
// animation goes to idle, the end of the out animation to exited, which the dialog stack waits
// for. A change to idle or exited settles on the following update (a second, same-state change): only
// then is an entered dialog activated and given the input focus.
//
// Description keys (besides those of uiDialog); sub-keys and their forms in docs/description-format.md:
//   AnimIn <sub-key> ...           the dialog's in record
//   AnimOut <sub-key> ...          the dialog's out record
//   SubAnimCount = int             number of sub-animations (allocates them, unmapped)
//   SubAnimIn <id> <sub-key> ...   sub-animation id's in record; the sub-key "widget = path" maps it
//   SubAnimOut <id> <sub-key> ...  its out record
#pragma once
#include "runtime/uianimrecord.h"
#include "uidialog.h"

class uiAnimDialog : public uiDialog {
    UI_DECLARE_WIDGET(uiAnimDialog)

public:
    uiAnimDialog() = default;
    ~uiAnimDialog() override;

    // Unlike the widget base, passes on to children with overridden visibility too, and leaves alone the
    // widgets that fade out while the dialog exits.
    void setVisible(bool visible, bool recurse) override;

    void enter() override;
    void exit() override;
    void hide() override;
    void idle() override;
    int getLastState() const override { return m_lastState; }

    // id -1: the dialog's own in (out false) or out record; otherwise that sub-animation's.
    virtual void setAnimSound(bool out, int id, const char* name);

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _render(int x, int y) override;
    void _update(int x, int y) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;

private:
    struct SubAnim {
        _uiAnimData_s in, out;
        uiWidget* widget = nullptr; // not owned; null until mapped
        unsigned int elapsed = 0;
        int startX = 0, startY = 0;
        int homeX = 0, homeY = 0; // the widget's position when it was mapped
    };

    void setState(int state);
    void _start(int state, const _uiAnimData_s& rec);
    void _parseSubAnim(Parser* parser, bool out);
    void _mapSubAnim(Parser* parser, SubAnim& sub);
    void _allocSubAnims(int count);
    void _freeSubAnims();
    bool _fadesOut(const uiWidget* child) const;

    _uiAnimData_s m_in, m_out;
    unsigned int m_elapsed = 0;
    int m_startX = 0, m_startY = 0;
    int m_subAnimCount = 0;
    SubAnim* m_subAnims = nullptr; // from the buffer pool
    int m_lastState = UIS_HIDDEN;
};
