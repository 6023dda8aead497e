// uiWidget: the tree, the state setters, the frame recursions and input delivery.
#include "uiwidget.h"
#include <cstring>
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "gfxsubsystem.h"
#include "logger.h"
#include "soundsubsystem.h"
#include "uisubsystem.h"

unsigned int uiWidget::s_iDeltaTime = 0;
float uiWidget::s_fDeltaTime = 0.0f;
unsigned long long uiWidget::s_frameNumber = 0;
std::atomic<bool> uiWidget::s_terminate{false};
bool uiWidget::s_dynamicLoading = true;
uiProgressCb uiWidget::_progCb = nullptr;
void* uiWidget::_progClient = nullptr;

uiWidget::uiWidget() = default;

void* uiWidget::operator new(std::size_t size) noexcept {
    return operator new(size, __FILE__, __LINE__);
}

void* uiWidget::operator new(std::size_t size, const char* file, unsigned int line) noexcept {
    return ui::poolAlloc(kUIPool, size, file, line);
}

void uiWidget::operator delete(void* p) noexcept {
    ui::poolFree(kUIPool, p);
}

void uiWidget::operator delete(void* p, const char*, unsigned int) noexcept {
    operator delete(p);
}

void uiWidget::_copyWidgetFields(const uiWidget& other) {
    mouseOverCb = other.mouseOverCb;
    mouseDownCb = other.mouseDownCb;
    mouseMoveCb = other.mouseMoveCb;
    mouseUpCb = other.mouseUpCb;
    keyDownCb = other.keyDownCb;
    keyUpCb = other.keyUpCb;
    std::memcpy(name, other.name, sizeof name);
    rect = other.rect;
    cbClient = other.cbClient;
    depth = other.depth;
    flags = other.flags;
    inputFocusFn = other.inputFocusFn;
    inputFocusClient = other.inputFocusClient;
}

uiWidget::~uiWidget() {
#ifndef NDEBUG
    // Its parent's list would keep pointing at it; callers detach first (debug builds name the widget).
    for (const _WidgetList_s* node = parent ? parent->children : nullptr; node; node = node->next)
        if (node->widget == this)
            Logger::log(Logger::kError,
                        "uiWidget[^CFFFF00%s^c] deleted while still a child of ^CFFFF00%s^c\f", name,
                        parent->name);
#endif
    while (children) {
        _WidgetList_s* node = children;
        children = node->next;
        node->widget->parent = nullptr; // going with its parent, not left behind in a list
        delete node->widget;
        ui::poolDelete(kUIPool, node);
    }
    while (globalInputFocus) {
        _WidgetNameList_s* entry = globalInputFocus;
        globalInputFocus = entry->next;
        ui::poolDelete(kUIPool, entry);
    }
}

bool uiWidget::s_namesEqual(const char* a, const char* b) {
    return ui::equalNoCase(a, b);
}

bool uiWidget::isType(const char* typeName) {
    return ui::equalNoCase(typeName, "uiWidget");
}

bool uiWidget::testBounds(int x, int y) {
    return rect.x <= x && x < rect.x2 && rect.y <= y && y < rect.y2;
}

// ---- tree -------------------------------------------------------------------------------------------

void uiWidget::addChild(uiWidget* child, bool inheritStates) {
    _WidgetList_s* node = UI_POOL_NEW(_WidgetList_s, kUIPool);
    if (!node) {
        Logger::log(Logger::kError, "%s::addChild(%s): Out of Memory\f", name, child ? child->name : "");
        return;
    }
    child->parent = this;
    node->widget = child;
    node->next = children;
    children = node;
    if (inheritStates)
        child->setWidgetStates((flags & WF_VISIBLE) != 0, (flags & WF_ACTIVE) != 0,
                               (flags & WF_INPUT_FOCUS) != 0, true);
}

void uiWidget::detachFromParent() {
    if (!parent) return;
    if (g_ui) g_ui->updateLock(true);
    _WidgetList_s** link = &parent->children;
    while (*link && (*link)->widget != this)
        link = &(*link)->next;
    if (!*link) {
        Logger::log(Logger::kError, "Parent[%s] child[%s] mismatch detected on detachFromParent()\f",
                    parent->name, name);
    } else {
        _WidgetList_s* node = *link;
        *link = node->next;
        parent = nullptr;
        ui::poolDelete(kUIPool, node);
    }
    if (g_ui) g_ui->updateLock(false);
}

uiWidget* uiWidget::getRootWidget() {
    uiWidget* w = this;
    while (w->parent)
        w = w->parent;
    return w;
}

namespace {

// The first child subtree that holds `path` (none when `path` is null); a search that started here
// (level 0) and finds nothing logs `shownPath` when asked to.
uiWidget* findBelow(const _WidgetList_s* children, const char* path, const char* shownPath, int level,
                    bool warn) {
    for (const _WidgetList_s* node = path ? children : nullptr; node; node = node->next)
        if (uiWidget* r = node->widget->getWidget(path, level + 1, true)) return r;
    if (level == 0 && warn)
        Logger::log(Logger::kError, "uiWidget::getWidget(): Unknown name: ^C0000FF%s^c\f", shownPath);
    return nullptr;
}

} // namespace

uiWidget* uiWidget::getWidget(const char* path, int level, bool warn) {
    char buffer[130];
    ui::copyName(buffer, path);
    char* rest = std::strchr(buffer, '.');
    if (rest) *rest++ = '\0';
    const bool named = ui::equalNoCase(buffer, name);
    if (named && !rest) return this;
    return findBelow(children, named ? rest : nullptr, path, level, warn);
}

uiWidget* uiWidget::getChildWidget(const char* path, int level, bool warn) {
    return findBelow(children, path, path, level, warn);
}

void uiWidget::getBasisCoords(int* x, int* y) {
    *x = 0;
    *y = 0;
    if (flags & WF_ROOT_COORDS) return;
    for (uiWidget* w = parent; w; w = w->parent) {
        *x += w->rect.x;
        *y += w->rect.y;
        if (w->flags & WF_ROOT_COORDS) break;
    }
}

// ---- states -----------------------------------------------------------------------------------------

bool uiWidget::_setOwnState(unsigned int bit, bool on) {
    const bool isSet = (flags & bit) != 0;
    if (on && !isSet) {
        if (bit == WF_INPUT_FOCUS && inputFocusFn && !inputFocusFn(this, inputFocusClient)) return false;
        switch (bit) {
        case WF_VISIBLE:
            _showWidget();
            break;
        case WF_ACTIVE:
            _activate();
            break;
        default:
            _gainFocus();
            break;
        }
        flags |= bit;
    } else if (!on && isSet) {
        switch (bit) {
        case WF_VISIBLE:
            _hideWidget();
            break;
        case WF_ACTIVE:
            _deactivate();
            break;
        default:
            _loseFocus();
            break;
        }
        flags &= ~bit;
    }
    return true;
}

void uiWidget::_setState(unsigned int bit, unsigned int overrideBit, bool on, bool recurse) {
    if (!_setOwnState(bit, on) || !recurse) return;
    for (_WidgetList_s* node = children; node; node = node->next) {
        uiWidget* child = node->widget;
        // Dialogs keep their own states; override bits keep a subtree's state.
        if ((child->flags & overrideBit) || child->isType("uiDialog")) continue;
        switch (bit) {
        case WF_VISIBLE:
            child->setVisible(on, true);
            break;
        case WF_ACTIVE:
            child->setActive(on, true);
            break;
        default:
            child->setInputFocus(on, true);
            break;
        }
    }
}

void uiWidget::setVisible(bool visible, bool recurse) {
    _setState(WF_VISIBLE, WF_OVERRIDE_VISIBLE, visible, recurse);
}
void uiWidget::setActive(bool active, bool recurse) {
    _setState(WF_ACTIVE, WF_OVERRIDE_ACTIVE, active, recurse);
}
void uiWidget::setInputFocus(bool focus, bool recurse) {
    _setState(WF_INPUT_FOCUS, WF_OVERRIDE_INPUT_FOCUS, focus, recurse);
}

void uiWidget::setWidgetStates(bool visible, bool active, bool inputFocus, bool recurse) {
    setVisible(visible, recurse);
    setActive(active, recurse);
    setInputFocus(inputFocus, recurse);
}

static void setBit(unsigned int& flags, unsigned int bit, bool on) {
    flags = on ? (flags | bit) : (flags & ~bit);
}

bool uiWidget::setActive() const {
    return (flags & WF_ACTIVE) != 0;
}
void uiWidget::overrideVisible(bool on) {
    setBit(flags, WF_OVERRIDE_VISIBLE, on);
}
void uiWidget::overrideInputFocus(bool on) {
    setBit(flags, WF_OVERRIDE_INPUT_FOCUS, on);
}
void uiWidget::overrideActive(bool on) {
    setBit(flags, WF_OVERRIDE_ACTIVE, on);
}
bool uiWidget::getVisible() const {
    return (flags & WF_VISIBLE) != 0;
}
bool uiWidget::getInputFocus() const {
    return (flags & WF_INPUT_FOCUS) != 0;
}
bool uiWidget::getOverrideVisible() const {
    return (flags & WF_OVERRIDE_VISIBLE) != 0;
}
bool uiWidget::getOverrideInputFocus() const {
    return (flags & WF_OVERRIDE_INPUT_FOCUS) != 0;
}
bool uiWidget::getOverrideActive() const {
    return (flags & WF_OVERRIDE_ACTIVE) != 0;
}
int uiWidget::getWidth() const {
    return rect.x2 - rect.x;
}
int uiWidget::getHeight() const {
    return rect.y2 - rect.y;
}
void uiWidget::setWidth(int w) {
    rect.x2 = ui::clampCoord(static_cast<long long>(rect.x) + w);
}
void uiWidget::setHeight(int h) {
    rect.y2 = ui::clampCoord(static_cast<long long>(rect.y) + h);
}

// ---- frame recursions -------------------------------------------------------------------------------

// update, render and inputEvent: src/core/uiframewalk.cpp.

bool uiWidget::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (handled) return false;
    if (testBounds(x, y)) {
        if (mouseOverCb) mouseOverCb(this, cbClient, x, y);
        if (mouseDownCb && kind == UIE_MOUSE_DOWN && !buttonDown) return mouseDownCb(this, cbClient, x, y);
        if (mouseUpCb && kind == UIE_MOUSE_UP) return mouseUpCb(this, cbClient, x, y);
    }
    if (keyDownCb && kind == UIE_KEY_DOWN) return keyDownCb(this, cbClient, key);
    if (keyUpCb && kind == UIE_KEY_UP) return keyUpCb(this, cbClient, key);
    return false;
}

void uiWidget::initialize() {
    _initialize();
    for (_WidgetList_s* node = children; node; node = node->next)
        node->widget->initialize();
}

// ---- hit tracing ------------------------------------------------------------------------------------

_uiTrace_s* uiWidget::trace(int tag, int x, int y, const char* type) {
    if ((flags & WF_ROOT_COORDS) && parent) {
        x += parent->rect.x;
        y += parent->rect.y;
    }
    _uiTrace_s* r = _trace(tag, x, y, type);
    for (_WidgetList_s* node = children; node && !r; node = node->next)
        r = node->widget->trace(tag, x - rect.x, y - rect.y, type);
    return r;
}

_uiTrace_s* uiWidget::_trace(int, int x, int y, const char* type) {
    if (type && !isType(type)) return nullptr;
    if (!testBounds(x, y)) return nullptr;
    _uiTrace_s* r = UI_POOL_NEW(_uiTrace_s, kUIPool);
    if (r) *r = {x, y, this};
    return r;
}

// ---- callbacks, global input focus, alpha -----------------------------------------------------------

void uiWidget::assignCallbacks(_WidgetMap_s* map, void* client) {
    cbClient = client;
    mouseOverCb = map->mouseOverCb;
    mouseDownCb = map->mouseDownCb;
    mouseUpCb = map->mouseUpCb;
    mouseMoveCb = map->mouseMoveCb;
    keyDownCb = map->keyDownCb;
    keyUpCb = map->keyUpCb;
}

void uiWidget::inputFocusCb(uiFocusCb fn, void* client) {
    inputFocusFn = fn;
    inputFocusClient = client;
}

void uiWidget::registerProgCb(uiProgressCb cb, void* client) {
    _progCb = cb;
    _progClient = client;
}

void uiWidget::_progressReport(uiWidget* widget, e_uiProgressEvent event) {
    if (_progCb) _progCb(widget, _progClient, event);
}

void uiWidget::addGlobalInputFocusWidget(const char* path) {
    _WidgetNameList_s* entry = UI_POOL_NEW(_WidgetNameList_s, kUIPool);
    if (!entry) {
        Logger::log(Logger::kError, "%s::addGlobalInputFocusWidget(%s): Out of Memory\f", name, path);
        return;
    }
    ui::copyName(entry->name, path);
    entry->widget = nullptr;
    entry->next = globalInputFocus;
    globalInputFocus = entry;
}

void uiWidget::_initialize() {
    for (_WidgetNameList_s* entry = globalInputFocus; entry; entry = entry->next)
        _addGlobalInputFocusWidget(entry);
}

void uiWidget::_addGlobalInputFocusWidget(_WidgetNameList_s* entry) {
    entry->widget = getRootWidget()->getWidget(entry->name, 0, true);
    if (!entry->widget)
        Logger::log(Logger::kError, "addGlobalInputFocusWidget(): unknown widget: ^CFFFF00%s^c\f",
                    entry->name);
}

void uiWidget::setAlpha(unsigned char alpha, unsigned int time, unsigned int delay, bool recurse) {
    if ((flags & WF_IGNORE_ALPHA) || !recurse) return;
    for (_WidgetList_s* node = children; node; node = node->next)
        node->widget->setAlpha(alpha, time, delay, true);
}

// ---- sound and graphics helpers ---------------------------------------------------------------------

soundHandle* uiWidget::_playWithPan(const char* sound, unsigned int mode, float frequencyScale, int value) {
    int range = g_gfx ? g_gfx->getScreenWidth() : 0;
    if (mode & WP_WORLD)
        Logger::log(Logger::kError, "_playWithPan( WP_WORLD ): Not Implemented\f");
    else if ((mode & WP_PARENT) && parent)
        range = parent->rect.x2 - parent->rect.x;
    else if (mode & WP_WIDTH)
        range = value;

    int position;
    if (mode & WP_LEFT)
        position = rect.x;
    else if (mode & WP_RIGHT)
        position = rect.x2;
    else if (mode & WP_POS)
        position = value;
    else
        position = rect.x + (rect.x2 - rect.x) / 2;

    // A zero range has no meaningful position: play centred.
    float pan = range != 0 ? static_cast<float>(position) / static_cast<float>(range) * 1.8f - 0.9f : 0.0f;
    if (pan < -0.9f) pan = -0.9f;
    if (pan > 0.9f) pan = 0.9f;

    soundHandle* handle = g_sound ? g_sound->playSound(SOUND_TYPE_UI, sound, false, false) : nullptr;
    if (handle) {
        handle->setFrequencyScale(frequencyScale);
        handle->setPan(pan);
    }
    return handle;
}

void uiWidget::_releaseSprite(int spriteId) {
    if (!g_gfx || spriteId == -1) return;
    if (const char* spriteName = g_gfx->getSpriteName(spriteId)) g_gfx->releaseSprite(spriteName);
}

void uiWidget::_releaseParticleSystemInstance(int instance) {
    if (g_gfx && instance != -1) g_gfx->releaseParticleSystemInstance(instance);
}
