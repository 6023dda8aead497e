// uiDialog: states, activation, tab entries and the tab/click focus movement.
#include "uidialog.h"
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"
#include "uiparticlesystem.h"
#include "core/uidescvalue.h"
#include "uisubsystem.h"

UI_DEFINE_WIDGET(uiDialog, uiNonVisualWidget, "uidialog.h")

uiDialog::~uiDialog() {
    while (m_tabHead) {
        TabNode* node = m_tabHead;
        m_tabHead = node->next;
        ui::poolDelete(kUIPool, node);
    }
}

// ---- description keys -------------------------------------------------------------------------------

void uiDialog::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "tabentry")) {
        // Inside a dialog's own block the key always names an entry; the valueless form belongs to
        // the blocks of the widgets below it.
        const char* path = ui::nameAfterEquals(parser, "tabentry = \"string\"");
        if (!path) return;
        if (uiWidget* w = getWidget(path, 0, true))
            addTabEntry(w);
        else
            Logger::log(Logger::kError, "...tabentry: \"^C00FF00%s^c does not exist.\f", path);
    } else if (ui::equalNoCase(key, "takefocus")) {
        if (ui::expectEquals(parser, "takefocus = BOOLEAN")) m_takesFocus = _parseBoolean(parser);
    } else {
        uiNonVisualWidget::_parseParams(parser, key);
    }
}

// ---- dialog operations ------------------------------------------------------------------------------

void uiDialog::activate(bool on) {
    setActive(on, true);
    setVisible(on, true);
    setInputFocus(on, true);
    if (on && m_takesFocus && g_ui) g_ui->setInputFocusWidget(this);
}

void uiDialog::idle() {
    activate(true);
    m_state = UIS_IDLE;
}

void uiDialog::hide() {
    setActive(false, true);
    m_state = UIS_HIDDEN;
    if (m_hideCb) m_hideCb(this, m_hideCbData);
}

void uiDialog::enter() {
    idle();
}

void uiDialog::exit() {
    hide();
}

void uiDialog::reset() {
    resetTabFocus();
    _resetParticleSystems(this);
}

void uiDialog::dlgHideCb(uiDialogHideCb callback, void* data) {
    m_hideCb = callback;
    m_hideCbData = data;
}

void uiDialog::_resetParticleSystems(uiWidget* root) {
    for (const _WidgetList_s* node = root->getChildren(); node; node = node->next) {
        uiWidget* child = node->widget;
        if (child->isType("uiParticleSystem")) static_cast<uiParticleSystem*>(child)->reset();
        _resetParticleSystems(child);
    }
}

// ---- tab entries ------------------------------------------------------------------------------------

void uiDialog::addTabEntry(uiWidget* w) {
    TabNode* node = UI_POOL_NEW(TabNode, kUIPool);
    if (!node) {
        Logger::log(Logger::kError, "%s::addTabEntry(%s): Out of Memory\f", name, w->name);
        return;
    }
    node->widget = w;
    if (m_tabTail)
        m_tabTail->next = node;
    else
        m_tabHead = node;
    m_tabTail = node;
    if (!m_tabCurrent) {
        m_tabCurrent = node;
        w->setInputFocus(true, true);
    } else {
        w->setInputFocus(false, true);
    }
}

namespace {
bool isWithin(uiWidget* w, const uiWidget* subtree) {
    for (; w; w = w->getParent())
        if (w == subtree) return true;
    return false;
}
} // namespace

void uiDialog::removeTabEntries(const uiWidget* subtree) {
    TabNode* previous = nullptr;
    for (TabNode* node = m_tabHead; node;) {
        TabNode* next = node->next;
        if (isWithin(node->widget, subtree)) {
            (previous ? previous->next : m_tabHead) = next;
            if (m_tabTail == node) m_tabTail = previous;
            if (m_tabCurrent == node) m_tabCurrent = nullptr;
            ui::poolDelete(kUIPool, node);
        } else {
            previous = node;
        }
        node = next;
    }
    if (!m_tabCurrent) m_tabCurrent = m_tabHead;
}

void uiDialog::resetTabFocus() {
    for (TabNode* node = m_tabHead; node; node = node->next)
        node->widget->setInputFocus(node == m_tabCurrent, true);
}

void uiDialog::_moveTabFocus(TabNode* to) {
    m_tabCurrent->widget->setInputFocus(false, true);
    m_tabCurrent = to;
    to->widget->setInputFocus(true, true);
}

// ---- input ------------------------------------------------------------------------------------------

bool uiDialog::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (!handled && kind == UIE_KEY_DOWN && key == KEY_TAB) {
        if (m_tabCurrent) _moveTabFocus(m_tabCurrent->next ? m_tabCurrent->next : m_tabHead);
        return true;
    }
    if (!handled && kind == UIE_MOUSE_DOWN) {
        for (TabNode* node = m_tabHead; node; node = node->next) {
            int bx, by;
            node->widget->getBasisCoords(&bx, &by);
            if (node->widget->testBounds(x - bx, y - by) && node->widget->getVisible() &&
                node != m_tabCurrent) {
                _moveTabFocus(node);
                return true;
            }
        }
    }
    return uiWidget::_inputEvent(kind, x, y, key, buttonDown, handled);
}
