// uiAnimWidget: in and out animations of a single visual widget.
#include "runtime/uianimwidget.h"
#include "core/uiutil.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiAnimWidget, uiVisualWidget, "uianimwidget.h")

uiAnimWidget::~uiAnimWidget() {
    _releaseSprite(m_in.sprite);
    _releaseSprite(m_out.sprite);
}

void uiAnimWidget::setAnimSound(bool out, const char* soundName) {
    ui::copyName((out ? m_out : m_in).sound, soundName);
}

// ---- description keys -------------------------------------------------------------------------------

void uiAnimWidget::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "AnimIn") || ui::equalNoCase(key, "AnimOut"))
        uiAnim::parseKey(parser, parser->GetToken(" "), ui::equalNoCase(key, "AnimIn") ? m_in : m_out,
                         &_releaseSprite);
    else
        uiVisualWidget::_parseParams(parser, key);
}

// A widget that starts idle has nothing that would ever run its entrance: its in record counts as
// finished, without the move to the record's end position, so the description's place stays.
void uiAnimWidget::_initialize() {
    uiVisualWidget::_initialize();
    if (m_state == UIS_IDLE && m_lastState == UIS_HIDDEN) uiAnim::settleMask(m_in);
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiAnimWidget::setState(int state) {
    m_lastState = m_state;
    m_state = state;
    m_elapsed = 0;
    if (state == UIS_HIDDEN) {
        setActive(false, true);
        setInputFocus(false, true);
    } else if (state == UIS_ENTERING || state == UIS_EXITING) {
        setActive(true, true);
        setVisible(true, true);
        setInputFocus(false, true);
    }
}

void uiAnimWidget::start(int state, const _uiAnimData_s& rec) {
    setState(state);
    m_startX = rect.x;
    m_startY = rect.y;
    uiAnim::playSound(rec);
}

void uiAnimWidget::enter() {
    if (m_in.style == UIANIM_NONE)
        setState(UIS_IDLE);
    else
        start(UIS_ENTERING, m_in);
}

void uiAnimWidget::exit() {
    if (m_out.style == UIANIM_NONE)
        setState(UIS_HIDDEN);
    else
        start(UIS_EXITING, m_out);
}

void uiAnimWidget::idle() {
    uiAnim::finish(m_in, this);
}

void uiAnimWidget::hide() {
    uiAnim::finish(m_out, this);
}

void uiAnimWidget::setVisible(bool visible, bool recurse) {
    uiWidget::setVisible(visible, false);
    if (!recurse) return;
    for (const _WidgetList_s* node = getChildren(); node; node = node->next)
        if (!node->widget->isType("uiDialog")) node->widget->setVisible(visible, true);
}

// ---- update, render ---------------------------------------------------------------------------------

// The visual widget's own update (its alpha fade) does not run here.
void uiAnimWidget::_update(int, int) {
    if (m_state != UIS_ENTERING && m_state != UIS_EXITING) {
        if (m_lastState != m_state) setState(m_state);
        return;
    }
    const bool in = m_state == UIS_ENTERING;
    _uiAnimData_s& rec = in ? m_in : m_out;
    m_elapsed = uiAnim::step(m_elapsed, rec, this, m_startX, m_startY, true);
    if (m_elapsed < rec.time) return;
    setState(in ? UIS_IDLE : UIS_HIDDEN);
    // A Hidden entrance kept the widget invisible while it ran.
    if (in && rec.style == UIANIM_HIDDEN) setVisible(true, true);
}

void uiAnimWidget::_render(int x, int y) {
    const bool in = m_state == UIS_IDLE || m_state == UIS_ENTERING;
    uiAnim::drawMask(in ? m_in : m_out, this, x, y);
    if (m_state == UIS_HIDDEN) setVisible(false, true);
}
