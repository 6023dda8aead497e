// uiSubsystem: construction, the frame step, input routing, widget roles, the focus stack and the cursor.
#include "uisubsystem.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "logger.h"
#include "platform.h"
#include "runtime/uicriticalsection.h"

uiSubsystem* g_ui = nullptr;

void* uiSubsystem::operator new(std::size_t size) noexcept {
    return ui::poolAlloc(uiWidget::kUIPool, size, __FILE__, __LINE__);
}

void uiSubsystem::operator delete(void* p) noexcept {
    ui::poolFree(uiWidget::kUIPool, p);
}

uiSubsystem::uiSubsystem() {
    g_ui = this;
    m_lock = uiCriticalSection::create();
    if (!m_lock)
        Logger::log(Logger::kError, "uiSubsystem: could not create the subsystem lock: Out of Memory\f");
}

uiSubsystem::~uiSubsystem() {
    uiCriticalSection::destroy(m_lock);
    m_lock = nullptr;
    _freeDialogLists();
    for (FocusNode* list : {m_focus, m_spareFocus})
        while (list) {
            FocusNode* node = list;
            list = node->next;
            ui::poolDelete(uiWidget::kUIPool, node);
        }
    if (g_ui == this) g_ui = nullptr;
}

int uiSubsystem::initialize(Preferences*) {
    uiWidget::s_terminate = false;
    return 1;
}

void uiSubsystem::forceTerminate() {
    uiWidget::s_terminate = true;
}

int uiSubsystem::shutdown() {
    uiWidget::s_freeScripletCache();
    return 1;
}

// ---- frame ------------------------------------------------------------------------------------------

void uiSubsystem::_stepFrame(unsigned int ms) {
    uiWidget::s_iDeltaTime = ms;
    ++uiWidget::s_frameNumber;
    uiWidget::s_fDeltaTime = static_cast<float>(ms * 0.001); // the count converts exactly to double
    _updateDialogs();
    if (uiWidget* w = m_active ? m_active : m_topLevel) w->update(0, 0);
}

int uiSubsystem::update(unsigned int ms) {
    uiScopedLock lock(m_lock);
    _stepFrame(ms);
    return 1;
}

int uiSubsystem::render(unsigned int ms) {
    uiScopedLock lock(m_lock);
    _stepFrame(ms);
    if (uiWidget* w = m_visible ? m_visible : m_topLevel) w->render(0, 0);
    _renderGfxStatistics();
    return 1;
}

void uiSubsystem::inputEvent(e_uiEvent kind, int x, int y, int key) {
    uiScopedLock lock(m_lock);
    x = ui::clampCoord(x);
    y = ui::clampCoord(y);
    if (kind == UIE_KEY_DOWN || kind == UIE_KEY_UP || kind == UIE_CHAR || kind == UIE_OTHER) {
        x = m_mouseX;
        y = m_mouseY;
    }
    if (kind == UIE_KEY_DOWN || kind == UIE_KEY_UP) {
        const bool down = kind == UIE_KEY_DOWN;
        if (key == KEY_CTRL) m_ctrlDown = down;
        if (key == KEY_SHIFT) m_shiftDown = down;
        if (key == KEY_ALT) m_altDown = down;
    }

    if (m_focus && m_focus->widget) {
        int bx, by;
        m_focus->widget->getBasisCoords(&bx, &by);
        m_focus->widget->inputEvent(kind, x - bx, y - by, key, m_mouseDown, false);
    } else if (m_topLevel) {
        m_topLevel->inputEvent(kind, x, y, key, m_mouseDown, false);
    }

    if (kind == UIE_MOUSE_MOVE) {
        if (m_cursor) {
            m_cursor->rect.x = x;
            m_cursor->rect.y = y;
        }
        m_mouseX = x;
        m_mouseY = y;
    } else if (kind == UIE_MOUSE_DOWN) {
        m_mouseDown = true;
    } else if (kind == UIE_MOUSE_UP) {
        m_mouseDown = false;
    }
}

_uiTrace_s* uiSubsystem::trace(int tag, int x, int y, const char* type) {
    if (m_focus && m_focus->widget) return m_focus->widget->trace(tag, x, y, type);
    return m_topLevel ? m_topLevel->trace(tag, x, y, type) : nullptr;
}

// ---- roles, loading, lock ---------------------------------------------------------------------------

void uiSubsystem::setTopLevelWidget(uiWidget* w) {
    uiScopedLock lock(m_lock);
    m_topLevel = w;
}

void uiSubsystem::setVisibleWidget(uiWidget* w) {
    uiScopedLock lock(m_lock);
    m_visible = w;
}

void uiSubsystem::setActiveWidget(uiWidget* w) {
    uiScopedLock lock(m_lock);
    m_active = w;
}

uiWidget* uiSubsystem::loadUI(const char* file) {
    uiWidget* root = uiWidget::loadUI(file, nullptr);
    if (root) root->initialize();
    return root;
}

void uiSubsystem::updateLock(bool lock) {
    if (!m_lock) return;
    if (lock)
        m_lock->enter();
    else
        m_lock->leave();
}

// ---- input focus stack ------------------------------------------------------------------------------

void uiSubsystem::setInputFocusWidget(uiWidget* w) {
    uiScopedLock lock(m_lock);
    if (!m_focus) {
        pushInputFocusWidget(w);
        return;
    }
    m_focus->widget = w;
}

uiWidget* uiSubsystem::getInputFocusWidget() {
    uiScopedLock lock(m_lock);
    return m_focus ? m_focus->widget : nullptr;
}

void uiSubsystem::pushInputFocusWidget(uiWidget* w) {
    uiScopedLock lock(m_lock);
    FocusNode* node = m_spareFocus;
    if (node)
        m_spareFocus = node->next;
    else
        node = UI_POOL_NEW(FocusNode, uiWidget::kUIPool);
    if (!node) {
        Logger::log(Logger::kError, "uiSubsystem::pushInputFocusWidget(%s): Out of Memory\f",
                    w ? w->name : "null");
        return;
    }
    node->widget = w;
    node->next = m_focus;
    m_focus = node;
}

void uiSubsystem::popInputFocusWidget() {
    uiScopedLock lock(m_lock);
    if (!m_focus) return;
    FocusNode* node = m_focus;
    m_focus = node->next;
    node->next = m_spareFocus;
    m_spareFocus = node;
}

// ---- cursor -----------------------------------------------------------------------------------------

void uiSubsystem::setCustomCursor(uiWidget* w) {
    if (m_cursor) m_cursor->setVisible(false, true);
    m_cursor = w;
    if (!w) {
        Platform::ShowCursor(true);
        return;
    }
    w->setVisible(true, true);
    Platform::GetCursorPos(w->rect.x, w->rect.y);
    Platform::ShowCursor(false);
}
