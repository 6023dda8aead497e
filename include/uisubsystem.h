// uiSubsystem: the one manager object of the library, reached through g_ui.
//
// Each frame the game forwards its input as inputEvent calls, then calls update(ms) or render(ms). The
// subsystem keeps the frame clock, the modifier keys and mouse state, the input-focus stack, the queued
// dialog stack, the statistics overlay and the lock that separates frames from other threads.
#pragma once
#include "uiapi.h"
#include "uiwidget.h"

class uiDialog;
class uiCriticalSection;
class Preferences;

// Dialog stack commands, queued by pushDialog / popDialog / clearDialogStack and run at the next frame.
enum { DSC_PUSH = 0, DSC_POP = 1, DSC_CLEAR = 2, DSC_PUSH_NOW = 3, DSC_POP_NOW = 4, DSC_CLEAR_NOW = 5 };

struct _DialogStackCmd_s {
    int kind;
    uiDialog* dialog;
    _DialogStackCmd_s* next;
};

class UI_API uiSubsystem {
public:
    uiSubsystem();
    virtual ~uiSubsystem();
    uiSubsystem(const uiSubsystem&) = delete; // would share the lock and the lists
    uiSubsystem& operator=(const uiSubsystem&) = delete;

    // The subsystem lives in the memory manager's UI pool, like the widgets.
    static void* operator new(std::size_t size) noexcept;
    static void operator delete(void* p) noexcept;

    int initialize(Preferences* prefs); // readies loading (prefs is unused); 1
    void forceTerminate();              // stops any load in progress, on any thread, at its next line
    int shutdown();                     // frees the cached scriptlets; call before deleting; 1

    // Frame.
    int update(unsigned int ms);
    int render(unsigned int ms);
    void inputEvent(e_uiEvent kind, int x, int y, int key);
    _uiTrace_s* trace(int tag, int x, int y, const char* type);

    // Widget roles.
    void setTopLevelWidget(uiWidget* w);
    uiWidget* getTopLevelWidget() { return m_topLevel; }
    void setVisibleWidget(uiWidget* w);
    void setActiveWidget(uiWidget* w);

    // Loads a description file and initializes the new tree; null when it cannot. The caller owns it.
    uiWidget* loadUI(const char* file);

    // Input focus stack.
    void setInputFocusWidget(uiWidget* w);
    uiWidget* getInputFocusWidget();
    void pushInputFocusWidget(uiWidget* w);
    void popInputFocusWidget();

    // Cursor and state queries.
    void setCustomCursor(uiWidget* w);
    int getMousePositionX() { return m_mouseX; }
    int getMousePositionY() { return m_mouseY; }
    bool ctrlKeyDown() { return m_ctrlDown; }
    bool shiftKeyDown() { return m_shiftDown; }
    bool altKeyDown() { return m_altDown; }
    void updateLock(bool lock);

    // Statistics overlay.
    void gfxStatistics(bool on, const char* font);

    // Dialog stack.
    void pushDialog(uiDialog* d, bool transition);
    void popDialog(uiDialog* d, bool transition);
    void clearDialogStack(bool transition);
    void clearPendingDialogs();
    uiDialog* topDialog();
    bool topDialogIsIdle(uiDialog* d);
    bool isDialogPushed(uiDialog* d);
    void reportDialogStack();

    // Makes a widget type known to descriptions by name (UI_DECLARE_WIDGET gives the allocator).
    static void s_registerWidget(const char* name, uiWidget* (*allocator)());

protected:
    struct FocusNode {
        uiWidget* widget;
        FocusNode* next;
    };
    struct DialogNode {
        uiDialog* dialog;
        DialogNode* next;
    };

    // The dialog stack's steps: queueing and dropping commands, pushing and popping now, running the
    // queue each frame; and drawing the statistics overlay.
    void _addDialogStackCmd(int kind, uiDialog* d);
    void _removeDialogStackCmd();
    void _pushDialog(uiDialog* d);
    void _popDialog();
    void _updateDialogs();
    void _renderGfxStatistics();

    bool m_mouseDown = false;
    bool m_ctrlDown = false;
    bool m_shiftDown = false;
    bool m_altDown = false;
    uiWidget* m_topLevel = nullptr;
    FocusNode* m_focus = nullptr;
    FocusNode* m_spareFocus = nullptr; // popped entries kept for the next push: input allocates nothing
    uiWidget* m_visible = nullptr;
    uiWidget* m_active = nullptr;
    uiWidget* m_cursor = nullptr;
    uiCriticalSection* m_lock = nullptr;
    int m_mouseX = -50;
    int m_mouseY = -50;
    DialogNode* m_dialogs = nullptr;
    _DialogStackCmd_s* m_cmdHead = nullptr;
    _DialogStackCmd_s* m_cmdTail = nullptr;
    int m_cmdCount = 0;
    DialogNode* m_awaitingHide = nullptr; // dialogs popped by a transition, hidden at the next frame
    bool m_statsEnabled = false;
    int m_statsFont = -1;

private:
    void _stepFrame(unsigned int ms);
    DialogNode* _unlinkTopDialog();
    void _hideAwaitingDialogs(uiDialog* only);
    bool _runDialogCmd(int kind, uiDialog* d);
    void _freeDialogLists();
};

extern UI_API uiSubsystem* g_ui;
