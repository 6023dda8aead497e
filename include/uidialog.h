// uiDialog: a widget subtree that the subsystem's dialog stack enters, makes the input target while it is
// on top, and exits again. It draws nothing itself; its children draw.
//
// States (getState, uistates.h): 0 hidden, 1 idle, 2 entering, 3 exiting, 4 exited. A plain dialog only
// knows 0 and 1; animated dialogs drive 2, 3 and 4 from their own update.
//
// Popping a plain dialog calls hide(), which deactivates the tree but leaves its visibility alone, so its
// text widgets stay drawn: a game gives it a hide callback (dlgHideCb) that calls setVisible(false, true).
// An animated dialog (uiAnimDialog) hides itself when its exit ends.
//
// A dialog keeps a list of tab entries: the tab key moves the input focus to the next entry (wrapping),
// a click on an entry that does not hold the tab focus moves it there.
//
// Description keys (besides those of uiWidget):
//   tabentry = path        adds the widget at path (a path that starts with the dialog's own name) as a
//                          tab entry; entries are added in file order, the first starts with the focus
//   takefocus = BOOLEAN    whether showing the dialog makes it the input-focus widget (default true)
#pragma once
#include "uinonvisualwidget.h"
#include "uistates.h"

typedef void (*uiDialogHideCb)(uiWidget* dialog, void* data);

class UI_API uiDialog : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(uiDialog)

public:
    uiDialog() = default;
    ~uiDialog() override;

    // Shows and activates (or hides and deactivates) the subtree and its input; when shown and taking
    // focus, the dialog replaces the widget of the subsystem's top focus entry.
    void activate(bool on);

    // Dialog operations, in slot order after uiWidget's.
    virtual void reset();
    virtual void enter();
    virtual void exit();
    virtual void hide();
    virtual void idle();
    virtual int getState() const { return m_state; }
    virtual int getLastState() const { return m_state; }

    bool takesFocus() { return m_takesFocus; } // the description's takefocus
    // A number the game keeps with the dialog; the library does not read it.
    int getUserValue() const { return m_userValue; }
    void setUserValue(int value) { m_userValue = value; }
    // Called with `data` each time the dialog is hidden (popped).
    void dlgHideCb(uiDialogHideCb callback, void* data);

    // Adds a widget at the end of the tab order.
    void addTabEntry(uiWidget* w);
    // Gives the input focus to the current tab entry alone.
    void resetTabFocus();
    // Takes `subtree` and every widget below it out of the tab order, before they are deleted. When the
    // current entry goes, the first remaining one becomes current (without a focus change).
    void removeTabEntries(const uiWidget* subtree);

protected:
    void _parseParams(Parser* parser, char* key) override;
    bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) override;
    void _resetParticleSystems(uiWidget* root); // starts the particle systems below `root` again

    struct TabNode {
        uiWidget* widget;
        TabNode* next;
    };

    void _moveTabFocus(TabNode* to); // makes `to` the current tab entry, with the input focus

    TabNode* m_tabHead = nullptr;
    TabNode* m_tabTail = nullptr;
    TabNode* m_tabCurrent = nullptr;
    int m_state = UIS_HIDDEN;
    bool m_takesFocus = true;
    int m_userValue = 0;
    uiDialogHideCb m_hideCb = nullptr;
    void* m_hideCbData = nullptr;
};
