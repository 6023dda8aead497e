// uiWidget: the base of every element of the user interface.
//
// A widget has a name, a rectangle (relative to its parent unless WF_ROOT_COORDS), a depth, one word of
// flags and state bits, a parent, children (newest first), six input callbacks, a focus veto callback and
// a list of global-input-focus widgets. Frames drive trees through the public recursions update, render
// and inputEvent; derived classes override the protected hooks (_update, _render, _inputEvent, the
// state hooks) and chain _parseParams / _parseSingleFlag down to this class.
//
// Description keys handled here: see docs/description-format.md.
#pragma once
#include <atomic>
#include <cstddef>
#include "uiapi.h"
#include "uikeys.h"

class uiWidget;
class Parser;
namespace ui {
struct FrameWalk;
}
class soundHandle;

enum e_uiEvent {
    UIE_MOUSE_MOVE = 0,
    UIE_MOUSE_DOWN = 1,
    UIE_MOUSE_UP = 2,
    UIE_KEY_DOWN = 3,
    UIE_KEY_UP = 4,
    UIE_CHAR = 5,
    UIE_OTHER = 6,
};

enum e_uiProgressEvent { UIPROG_CREATED = 0, UIPROG_PARAM = 1, UIPROG_DONE = 2 };

// Flags and state bits of uiWidget::flags; bits from 0x10000 upward belong to derived classes.
enum : unsigned int {
    WF_ACTIVE = 0x1,
    WF_VISIBLE = 0x2,
    WF_INPUT_FOCUS = 0x4,
    WF_ALPHA_TEST = 0x8,
    WF_ROOT_COORDS = 0x10,
    WF_IGNORE_ALPHA = 0x20,
    WF_OVERRIDE_ACTIVE = 0x100,
    WF_OVERRIDE_VISIBLE = 0x200,
    WF_OVERRIDE_INPUT_FOCUS = 0x400,
};

// Mode bits of uiWidget::_playWithPan.
enum : unsigned int {
    WP_LEFT = 0x1,
    WP_RIGHT = 0x2,
    WP_POS = 0x4,
    WP_WORLD = 0x8,
    WP_PARENT = 0x10,
    WP_WIDTH = 0x20
};

// A widget's rectangle, relative to its parent: left, top, right, bottom.
struct _uiRect_s {
    // Left, top, right and bottom edges.
    int x, y, x2, y2; // x2 and y2 lie outside the rectangle
};

// What trace found: the widget under a point, and the point relative to the widget's parent.
struct _uiTrace_s {
    // The point and the widget.
    int x, y;
    uiWidget* widget;
};

// A widget's children, in the order they were added: each child and the next entry (null at the end).
struct _WidgetList_s {
    // The child and the next entry.
    uiWidget* widget;
    _WidgetList_s* next;
};

// A widget's global input focus entries: each path as given, the widget it names and the next entry.
struct _WidgetNameList_s {
    // The path, the widget it names (resolved by _initialize) and the next entry.
    char name[128];
    uiWidget* widget;
    _WidgetNameList_s* next;
};

// One cached scriptlet file; the cache is a list ordered by use, most recently used first.
struct _ScriptletCache_s {
    char name[128];          // the file name as given; look-ups ignore case
    unsigned char* data;     // the whole text and a NUL (buffer pool)
    unsigned int size;       // length + 1
    _ScriptletCache_s* next; // used less recently
    _ScriptletCache_s* prev; // used more recently
};

typedef bool (*uiInputCb)(uiWidget* widget, void* client, int x, int y);
typedef bool (*uiKeyCb)(uiWidget* widget, void* client, int key);
typedef bool (*uiFocusCb)(uiWidget* widget, void* client);
typedef void (*uiProgressCb)(uiWidget* widget, void* client, e_uiProgressEvent event);

// The table handed to assignCallbacks. The release callback comes before the move callback here.
struct _WidgetMap_s {
    void* user; // not read by the library
    // The widget's callbacks of the same names.
    uiInputCb mouseOverCb;
    uiInputCb mouseDownCb;
    uiInputCb mouseUpCb;
    uiInputCb mouseMoveCb;
    uiKeyCb keyDownCb;
    uiKeyCb keyUpCb;
};

class UI_API uiWidget {
    friend struct ui::FrameWalk; // the frame and input recursions

public:
    static constexpr unsigned int kDepthSlots = 96; // depth names index 0 to 95; an unknown one gives 96
    static constexpr int kUIPool = 9;               // widgets, list nodes, records
    static constexpr int kBufPool = 0;              // buffers, texts, locks, threads, parsers

    uiWidget();
    uiWidget(const uiWidget&) = delete;
    uiWidget& operator=(const uiWidget&) = delete;

    // Widgets live in the memory manager's UI pool; a failed allocation makes `new` yield null.
    static void* operator new(std::size_t size) noexcept;
    static void* operator new(std::size_t size, const char* file, unsigned int line) noexcept;
    static void operator delete(void* p) noexcept;
    static void operator delete(void* p, const char* file, unsigned int line) noexcept;

    // Virtual operations, in slot order.
    virtual void applyScriptlet(const char* file);

protected:
    // Description parsing: a widget class reads its own keys in _parseParams and its own flag names in
    // _parseSingleFlag, and hands what it does not know to its base class.
    virtual bool _parseBoolean(Parser* parser);
    virtual void _parseParams(Parser* parser, char* key);
    virtual void _parseFlags(Parser* parser);
    virtual void _parseSingleFlag(const char* name);

public:
    // One frame over the subtree, at its parent's origin (x, y): updates the active widgets (_update),
    // draws the visible ones (_render), offers an input event until a widget takes it (true).
    virtual void update(int x, int y);
    virtual void render(int x, int y);
    virtual bool inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled);
    // After loading: _initialize of the widget and of its subtree.
    virtual void initialize();
    // The registered type name, and whether `typeName` is it or one of its base types.
    virtual const char* getType() = 0;
    virtual bool isType(const char* typeName);
    virtual ~uiWidget();
    // Whether (x, y), relative to the parent, is on the widget.
    virtual bool testBounds(int x, int y);
    // States, on the widget and with recurse on its subtree, skipping dialogs and subtrees whose override
    // bit for that state is set. Turning one on or off calls the matching hook (_showWidget, ...).
    virtual void setVisible(bool visible, bool recurse);
    virtual void setInputFocus(bool focus, bool recurse);
    virtual bool setActive() const; // the getter of the active state
    virtual void setActive(bool active, bool recurse);
    // Override bits: a set bit keeps this subtree's state when an ancestor changes it recursively.
    virtual void overrideVisible(bool on);
    virtual void overrideInputFocus(bool on);
    virtual void overrideActive(bool on);
    // The states and the override bits.
    virtual bool getVisible() const;
    virtual bool getInputFocus() const;
    virtual bool getOverrideVisible() const;
    virtual bool getOverrideInputFocus() const;
    virtual bool getOverrideActive() const;
    // The rectangle's size; setting it moves the far edges.
    virtual int getWidth() const;
    virtual int getHeight() const;
    virtual void setWidth(int w);
    virtual void setHeight(int h);
    // The widget of type `type` (any when null) under (x, y), this one or the first child subtree that
    // has one; null when none. The record comes from the memory manager's pool 9 (uiWidget::kUIPool) and
    // belongs to the caller, who frees it there: g_MemoryPtr->free(uiWidget::kUIPool, record).
    virtual _uiTrace_s* trace(int tag, int x, int y, const char* type);
    // Plays a sound panned by the widget's place on the screen (mode: WP_ bits).
    virtual soundHandle* _playWithPan(const char* sound, unsigned int mode, float frequencyScale, int value);

protected:
    // What a widget class does itself: initialize after loading, draw, update, take input (true: taken),
    // answer a trace; then the hooks of its states turning on and off.
    virtual void _initialize();
    virtual void _render(int x, int y) = 0;
    virtual void _update(int x, int y) = 0;
    virtual bool _inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled);
    virtual _uiTrace_s* _trace(int tag, int x, int y, const char* type);
    virtual void _showWidget() {}
    virtual void _hideWidget() {}
    virtual void _activate() {}
    virtual void _deactivate() {}
    virtual void _gainFocus() {}
    virtual void _loseFocus() {}

public:
    // Fades to `alpha` over `time` ms after `delay` ms; a widget without alpha of its own passes it on.
    virtual void setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse);

    // Tree.
    void addChild(uiWidget* child, bool inheritStates);
    void detachFromParent();
    uiWidget* getParent() { return parent; }
    const _WidgetList_s* getChildren() const { return children; }
    uiWidget* getRootWidget();
    uiWidget* getWidget(const char* path, int level, bool warn);
    uiWidget* getChildWidget(const char* path, int level, bool warn);
    void getBasisCoords(int* x, int* y);

    // States and flags.
    void setWidgetStates(bool visible, bool active, bool inputFocus, bool recurse);
    void setWidgetFlags(unsigned int f) { flags = f; }
    unsigned int getWidgetFlags() const { return flags; }

    // Depth.
    void setDepth(const char* name);
    void setDepth(unsigned int index) { depth = index; }
    unsigned int getDepth() const { return depth; }
    static void defineDepth(const char* name, unsigned int index);
    static const char* s_getDepthName(unsigned int index);
    static int s_getDepthValue(const char* name);

    // Callbacks.
    void assignCallbacks(_WidgetMap_s* map, void* client);
    void inputFocusCb(uiFocusCb fn, void* client);
    static void registerProgCb(uiProgressCb cb, void* client);

    // Global input focus.
    void addGlobalInputFocusWidget(const char* path);

    // Case-insensitive name comparison, as used for keys, flags, paths and type tests.
    static bool s_namesEqual(const char* a, const char* b);

    // Type registry.
    static int getTypeId(const char* typeName);
    static uiWidget* allocWidget(const char* name, const char* typeName);

    // Description loading.
    static uiWidget* loadUI(const char* file, uiWidget* parent);
    static uiWidget* parseObjHeader(Parser* parser, uiWidget* parent);
    void parse(Parser* parser, bool blockOpen);

    // Scriptlets: a cache of the 32 most recently used files, with a lock of its own.
    static constexpr int kScriptletCacheSize = 32;
    static void s_freeScripletCache();
    static _ScriptletCache_s* s_scriptletCacheHead;
    static _ScriptletCache_s* s_scriptletCacheTail;
    // Part of the interface; the library neither reads nor writes it.
    static unsigned int s_scriptletCacheCount;

    // Frame clock and library-wide switches.
    static unsigned int s_iDeltaTime;
    static float s_fDeltaTime;
    static unsigned long long s_frameNumber;
    static std::atomic<bool> s_terminate; // written by the game's thread, read by loading threads
    static bool s_dynamicLoading;

protected:
    // Helpers of the widget classes: a depth by name, a global input focus entry, a load progress report,
    // releasing a sprite or a particle system instance through g_gfx.
    int _getDepthValue(const char* name);
    void _addGlobalInputFocusWidget(_WidgetNameList_s* entry);
    static void _progressReport(uiWidget* widget, e_uiProgressEvent event);
    static void _releaseSprite(int spriteId);
    void _releaseParticleSystemInstance(int instance);

    // Loading: a description's text into a tree, a child's header line, a malformed line's message.
    static uiWidget* _parseUI(unsigned char* text, int length, uiWidget* parent);
    static uiWidget* _parseChildHeader(Parser* parser, uiWidget* parent);
    static void _parseError(const char* expected);
    // A "name = BOOLEAN" key of a derived class: true when `key` is `name` (ignoring case), whether or
    // not the line was well formed; a missing "=" is reported and leaves *value unchanged.
    bool _parseBooleanKey(Parser* parser, const char* key, const char* name, bool* value);

    // Scriptlets: applies one to this widget, reading it through the scriptlet cache.
    void _parseScriptlet(const char* file);
    unsigned char* _loadCachedScriptlet(const char* file, unsigned int* size);

    // The load progress callback (registerProgCb) and its client.
    static uiProgressCb _progCb;
    static void* _progClient;

    // For derived classes that offer copying: every field but the tree links (parent, children, global
    // input focus entries), which stay with their owner.
    void _copyWidgetFields(const uiWidget& other);

public:
    // Fields, in declared order.
    uiInputCb mouseOverCb = nullptr;
    uiInputCb mouseDownCb = nullptr;
    uiInputCb mouseMoveCb = nullptr;
    uiInputCb mouseUpCb = nullptr;
    uiKeyCb keyDownCb = nullptr;
    uiKeyCb keyUpCb = nullptr;
    char name[32] = {};
    _uiRect_s rect = {0, 0, 0, 0};
    void* cbClient = nullptr;
    unsigned int depth = 0;
    unsigned int flags = 0;

protected:
    // The tree links, the input focus callback (inputFocusCb) and its client, global input focus entries.
    uiWidget* parent = nullptr;
    _WidgetList_s* children = nullptr;
    uiFocusCb inputFocusFn = nullptr;
    void* inputFocusClient = nullptr;
    _WidgetNameList_s* globalInputFocus = nullptr;

    // Sets or clears one state bit (WF_VISIBLE, WF_ACTIVE or WF_INPUT_FOCUS) of this widget alone, with
    // its hook and, for the input focus, the focus veto: the step every state setter shares. False when
    // the veto refused the focus (and the children are then left alone too).
    bool _setOwnState(unsigned int bit, bool on);

private:
    void _setState(unsigned int bit, unsigned int overrideBit, bool on, bool recurse);
};

// Declares the type identity and allocator of an instanceable widget class; used in each class body.
#define UI_DECLARE_WIDGET(Class)                                                                             \
public:                                                                                                      \
    static uiWidget* s_allocator();                                                                          \
    const char* getType() override;                                                                          \
    bool isType(const char* typeName) override;

// Defines them in the class's source file: getType/isType answer for the class and its ancestors.
#define UI_DEFINE_WIDGET(Class, Base, header)                                                                \
    uiWidget* Class::s_allocator() {                                                                         \
        return new (header, __LINE__) Class();                                                               \
    }                                                                                                        \
    const char* Class::getType() {                                                                           \
        return #Class;                                                                                       \
    }                                                                                                        \
    bool Class::isType(const char* typeName) {                                                               \
        return uiWidget::s_namesEqual(typeName, #Class) || Base::isType(typeName);                           \
    }
