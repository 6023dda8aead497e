// uiSubsystem: the queued dialog stack. Games queue commands; the frame carries them out before any widget
// is updated, waiting while a dialog is still entering or exiting.
#include "core/uiutil.h"
#include "logger.h"
#include "uidialog.h"
#include "uisubsystem.h"

namespace {

constexpr int kCmdWarnCount = 32;

template <class Node> void freeList(Node*& head) {
    while (Node* node = head) {
        head = node->next;
        ui::poolDelete(uiWidget::kUIPool, node);
    }
}

} // namespace

// ---- queueing ---------------------------------------------------------------------------------------

void uiSubsystem::pushDialog(uiDialog* d, bool transition) {
    if (d) _addDialogStackCmd(transition ? DSC_PUSH : DSC_PUSH_NOW, d);
}

void uiSubsystem::popDialog(uiDialog* d, bool transition) {
    _addDialogStackCmd(transition ? DSC_POP : DSC_POP_NOW, d);
}

void uiSubsystem::clearDialogStack(bool transition) {
    _addDialogStackCmd(transition ? DSC_CLEAR : DSC_CLEAR_NOW, nullptr);
}

void uiSubsystem::clearPendingDialogs() {
    while (m_cmdHead)
        _removeDialogStackCmd();
}

void uiSubsystem::_addDialogStackCmd(int kind, uiDialog* d) {
    _DialogStackCmd_s* cmd = UI_POOL_NEW(_DialogStackCmd_s, uiWidget::kUIPool);
    if (!cmd) {
        Logger::log(Logger::kError, "_addDialogStackCmd(): Out of Memory\f");
        return;
    }
    cmd->kind = kind;
    cmd->dialog = d;
    cmd->next = nullptr;
    if (m_cmdTail)
        m_cmdTail->next = cmd;
    else
        m_cmdHead = cmd;
    m_cmdTail = cmd;
    // A threshold for spotting runaway queueing, not a capacity.
    if (++m_cmdCount > kCmdWarnCount)
        Logger::log(Logger::kWarning, "DialogStackCmd queue exceeds 32 count\f");
}

void uiSubsystem::_removeDialogStackCmd() {
    _DialogStackCmd_s* cmd = m_cmdHead;
    if (!cmd) return;
    m_cmdHead = cmd->next;
    if (!m_cmdHead) m_cmdTail = nullptr;
    --m_cmdCount;
    ui::poolDelete(uiWidget::kUIPool, cmd);
}

void uiSubsystem::_freeDialogLists() {
    freeList(m_dialogs);
    freeList(m_awaitingHide);
    clearPendingDialogs();
}

// ---- queries ----------------------------------------------------------------------------------------

uiDialog* uiSubsystem::topDialog() {
    return m_dialogs ? m_dialogs->dialog : nullptr;
}

bool uiSubsystem::topDialogIsIdle(uiDialog* d) {
    return d && topDialog() == d && d->getState() == UIS_IDLE && d->getLastState() == d->getState();
}

bool uiSubsystem::isDialogPushed(uiDialog* d) {
    for (DialogNode* node = m_dialogs; node; node = node->next)
        if (node->dialog == d) return true;
    return false;
}

void uiSubsystem::reportDialogStack() {}

// ---- the stack itself -------------------------------------------------------------------------------

void uiSubsystem::_pushDialog(uiDialog* d) {
    DialogNode* node = UI_POOL_NEW(DialogNode, uiWidget::kUIPool);
    if (!node) {
        Logger::log(Logger::kError, "_pushDialog(%s): Out of Memory\f", d->name);
        return;
    }
    node->dialog = d;
    node->next = m_dialogs;
    m_dialogs = node;
}

void uiSubsystem::_popDialog() {
    ui::poolDelete(uiWidget::kUIPool, _unlinkTopDialog());
}

// Takes the top node off the stack and hands a focus entry held by the popped dialog to the dialog below.
uiSubsystem::DialogNode* uiSubsystem::_unlinkTopDialog() {
    DialogNode* node = m_dialogs;
    if (!node) {
        Logger::log(Logger::kError, "_popDialog(): Stack underflow\f");
        return nullptr;
    }
    m_dialogs = node->next;
    node->next = nullptr;
    if (getInputFocusWidget() == node->dialog) setInputFocusWidget(topDialog());
    return node;
}

// Hides the dialogs popped by transition commands (all of them, or only `only`), oldest pop first.
void uiSubsystem::_hideAwaitingDialogs(uiDialog* only) {
    DialogNode** link = &m_awaitingHide;
    while (DialogNode* node = *link) {
        if (only && node->dialog != only) {
            link = &node->next;
            continue;
        }
        *link = node->next;
        uiDialog* d = node->dialog;
        ui::poolDelete(uiWidget::kUIPool, node);
        d->hide();
    }
}

// ---- carrying out commands --------------------------------------------------------------------------

void uiSubsystem::_updateDialogs() {
    _hideAwaitingDialogs(nullptr);
    while (m_cmdHead && _runDialogCmd(m_cmdHead->kind, m_cmdHead->dialog)) {
    }
}

// Runs the head command. Returns false to wait (the command stays queued for the next frame), true when
// the queue may go on. The order of the calls matters: enter(), idle() and activate() change the focus
// stack themselves.
bool uiSubsystem::_runDialogCmd(int kind, uiDialog* d) {
    uiDialog* top = topDialog();
    switch (kind) {
    case DSC_PUSH: {
        if (top && top->getState() != UIS_IDLE) return false;
        _hideAwaitingDialogs(d); // pushed again before its hide was due: hide it now, then enter afresh
        d->enter();
        DialogNode* before = m_dialogs;
        _pushDialog(d);
        if (m_dialogs == before) return false; // no stack node: try again next frame
        if (d->takesFocus()) pushInputFocusWidget(d);
        _removeDialogStackCmd();
        return d->getState() == UIS_IDLE;
    }
    case DSC_PUSH_NOW: {
        _hideAwaitingDialogs(d);
        DialogNode* before = m_dialogs;
        _pushDialog(d);
        if (m_dialogs == before) return false;
        if (d->takesFocus()) pushInputFocusWidget(d);
        d->idle();
        break;
    }
    case DSC_POP:
    case DSC_CLEAR: {
        if (!top || (d && d != top)) break;
        if (top->getState() == UIS_IDLE) top->exit();
        // Exited is an animated dialog that finished exiting; hidden is a dialog that hid itself in exit()
        // (a plain dialog) or was hidden by the game: neither will change any more.
        const int state = top->getState();
        if (state == UIS_EXITED || state == UIS_HIDDEN) {
            DialogNode* node = _unlinkTopDialog();
            if (state == UIS_EXITED) {
                DialogNode** tail = &m_awaitingHide;
                while (*tail)
                    tail = &(*tail)->next;
                *tail = node;
            } else {
                ui::poolDelete(uiWidget::kUIPool, node);
            }
            if (getInputFocusWidget() == d) popInputFocusWidget();
            if (kind == DSC_POP) break;
        }
        if (m_dialogs) return false; // a clear pops one dialog per frame
        break;
    }
    case DSC_POP_NOW:
        if (!top || (d && d != top)) break;
        if (getInputFocusWidget() == d) popInputFocusWidget();
        top->hide();
        _popDialog();
        break;
    case DSC_CLEAR_NOW:
        while (uiDialog* t = topDialog()) {
            t->hide();
            _popDialog();
        }
        break;
    default:
        break;
    }
    _removeDialogStackCmd();
    return true;
}
