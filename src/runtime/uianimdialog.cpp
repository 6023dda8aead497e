// uiAnimDialog: in and out animations of a dialog and its sub-animations, driven by the dialog stack.
#include "runtime/uianimdialog.h"
#include <climits>
#include <new>
#include "core/uinumber.h"
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"
#include "core/uidescvalue.h"

UI_DEFINE_WIDGET(uiAnimDialog, uiDialog, "uianimdialog.h")

uiAnimDialog::~uiAnimDialog() {
    _releaseSprite(m_in.sprite);
    _releaseSprite(m_out.sprite);
    _freeSubAnims();
}

void uiAnimDialog::setAnimSound(bool out, int id, const char* soundName) {
    if (id == -1) {
        ui::copyName((out ? m_out : m_in).sound, soundName);
    } else if (id >= 0 && id < m_subAnimCount) {
        SubAnim& sub = m_subAnims[id];
        ui::copyName((out ? sub.out : sub.in).sound, soundName);
    }
}

bool uiAnimDialog::_fadesOut(const uiWidget* child) const {
    for (int i = 0; i < m_subAnimCount; ++i) {
        const SubAnim& sub = m_subAnims[i];
        if (sub.widget == child &&
            (sub.out.style == UIANIM_ALPHAFADE || sub.out.style == UIANIM_ALPHAFADE_BEZIERLERP))
            return true;
    }
    return false;
}

// ---- sub-animation records --------------------------------------------------------------------------

void uiAnimDialog::_freeSubAnims() {
    for (int i = 0; i < m_subAnimCount; ++i) {
        _releaseSprite(m_subAnims[i].in.sprite);
        _releaseSprite(m_subAnims[i].out.sprite);
    }
    if (m_subAnims) g_MemoryPtr->free(kBufPool, m_subAnims);
    m_subAnims = nullptr;
    m_subAnimCount = 0;
}

void uiAnimDialog::_allocSubAnims(int count) {
    _freeSubAnims();
    if (count <= 0) return;
    const unsigned long long bytes = static_cast<unsigned long long>(count) * sizeof(SubAnim);
    void* memory = bytes <= UINT_MAX
                       ? g_MemoryPtr->alloc(kBufPool, static_cast<unsigned int>(bytes), __FILE__, __LINE__)
                       : nullptr;
    if (!memory) {
        Logger::log(Logger::kError, "uiAnimDialog(): out of memory allocating SubAnimData\f");
        return;
    }
    m_subAnims = static_cast<SubAnim*>(memory);
    for (int i = 0; i < count; ++i)
        new (&m_subAnims[i]) SubAnim();
    m_subAnimCount = count;
}

// ---- description keys -------------------------------------------------------------------------------

void uiAnimDialog::_parseParams(Parser* parser, char* key) {
    int count = INT_MIN;
    if (ui::equalNoCase(key, "AnimIn") || ui::equalNoCase(key, "AnimOut")) {
        uiAnim::parseKey(parser, parser->GetToken(" "), ui::equalNoCase(key, "AnimIn") ? m_in : m_out,
                         &_releaseSprite);
    } else if (parser->ParamEqualsInt32(key, "SubAnimCount", &count)) {
        // A dialog animates a screenful of children at most; a larger count is a typo or a hostile file
        // that would make the game allocate gigabytes.
        constexpr int kMaxSubAnims = 65536;
        if (count > kMaxSubAnims)
            Logger::log(Logger::kError,
                        "...line %d: SubAnimCount = %d is above the limit of %d sub-animations\f",
                        parser->GetLineNumber(), count, kMaxSubAnims);
        else if (count != INT_MIN) // unchanged: the parser reported a bad value
            _allocSubAnims(count);
    } else if (ui::equalNoCase(key, "SubAnimIn") || ui::equalNoCase(key, "SubAnimOut")) {
        _parseSubAnim(parser, ui::equalNoCase(key, "SubAnimOut"));
    } else {
        uiDialog::_parseParams(parser, key);
    }
}

void uiAnimDialog::_parseSubAnim(Parser* parser, bool out) {
    const char* idText = parser->GetToken(" ");
    int id = 0;
    if (!idText || !ui::parseInt32(idText, &id)) {
        ui::logExpected("subanimin id ...");
        return;
    }
    if (id < 0 || id >= m_subAnimCount) {
        Logger::log(Logger::kError, "...invalid SubAnim id: %d\f", id);
        return;
    }
    SubAnim& sub = m_subAnims[id];
    const char* subKey = parser->GetToken(" ");
    if (ui::equalNoCase(subKey, "widget"))
        _mapSubAnim(parser, sub);
    else
        uiAnim::parseKey(parser, subKey, out ? sub.out : sub.in, &_releaseSprite);
}

// The path starts with the dialog's own name or with one of its children's names.
void uiAnimDialog::_mapSubAnim(Parser* parser, SubAnim& sub) {
    const char* path = ui::nameAfterEquals(parser, "widget = \"val\"");
    if (!path) return;
    uiWidget* w = getWidget(path, 0, false);
    if (!w) w = getChildWidget(path, 0, true);
    if (!w) {
        Logger::log(Logger::kError,
                    "uiAnimDialog[^CFFFF00%s^c]: Failed to map subAnim widget: ^CFF0000%s^c\f", name, path);
        return;
    }
    sub.widget = w;
    sub.homeX = w->rect.x;
    sub.homeY = w->rect.y;
    sub.in.alphaStart = 255;
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiAnimDialog::setState(int state) {
    m_lastState = m_state;
    m_state = state;
    m_elapsed = 0;
    for (int i = 0; i < m_subAnimCount; ++i)
        if (m_subAnims[i].widget) m_subAnims[i].elapsed = 0;
    switch (state) {
    case UIS_HIDDEN:
        hide();
        setInputFocus(false, true);
        break;
    case UIS_IDLE:
        // Coming from the entrance, activation waits for the settling update.
        if (m_lastState != UIS_ENTERING) activate(true);
        for (int i = 0; i < m_subAnimCount; ++i)
            if (m_subAnims[i].widget && m_subAnims[i].in.style == UIANIM_HIDDEN)
                m_subAnims[i].widget->setWidgetStates(false, false, false, true);
        break;
    case UIS_ENTERING:
    case UIS_EXITING:
        // Updated and drawn while animating, but no input.
        setActive(true, true);
        setVisible(true, true);
        setInputFocus(false, true);
        break;
    default:
        setInputFocus(false, true);
        break;
    }
}

// Starts the entrance or the exit from where the dialog and its widgets are now; an
// entrance first puts the sub-animated widgets back at their home positions and start alphas.
void uiAnimDialog::_start(int state, const _uiAnimData_s& rec) {
    setState(state);
    m_startX = rect.x;
    m_startY = rect.y;
    uiAnim::playSound(rec);
    for (int i = 0; i < m_subAnimCount; ++i) {
        SubAnim& sub = m_subAnims[i];
        if (!sub.widget) continue;
        if (state == UIS_ENTERING) {
            sub.widget->rect.x = sub.homeX;
            sub.widget->rect.y = sub.homeY;
            sub.widget->setAlpha(static_cast<unsigned char>(sub.in.alphaStart), 0, 0, true);
        }
        sub.startX = sub.widget->rect.x;
        sub.startY = sub.widget->rect.y;
    }
}

void uiAnimDialog::enter() {
    if (m_in.style == UIANIM_NONE)
        setState(UIS_IDLE);
    else
        _start(UIS_ENTERING, m_in);
}

void uiAnimDialog::exit() {
    if (m_out.style == UIANIM_NONE)
        setState(UIS_EXITED);
    else
        _start(UIS_EXITING, m_out);
}

void uiAnimDialog::idle() {
    uiDialog::idle();
    uiAnim::finish(m_in, this);
    for (int i = 0; i < m_subAnimCount; ++i)
        if (m_subAnims[i].widget) uiAnim::finish(m_subAnims[i].in, m_subAnims[i].widget);
}

void uiAnimDialog::hide() {
    uiDialog::hide();
    uiAnim::finish(m_out, this);
    for (int i = 0; i < m_subAnimCount; ++i)
        if (m_subAnims[i].widget) uiAnim::finish(m_subAnims[i].out, m_subAnims[i].widget);
}

void uiAnimDialog::setVisible(bool visible, bool recurse) {
    uiWidget::setVisible(visible, false);
    if (!recurse) return;
    for (const _WidgetList_s* node = getChildren(); node; node = node->next) {
        uiWidget* child = node->widget;
        if (child->isType("uiDialog") || (m_state == UIS_EXITING && _fadesOut(child))) continue;
        child->setVisible(visible, true);
    }
}

// ---- update, render, input --------------------------------------------------------------------------

void uiAnimDialog::_update(int, int) {
    if (m_state != UIS_ENTERING && m_state != UIS_EXITING) {
        if (m_lastState != m_state) setState(m_state);
        return;
    }
    const bool in = m_state == UIS_ENTERING;
    _uiAnimData_s& rec = in ? m_in : m_out;
    const unsigned int elapsed = uiAnim::step(m_elapsed, rec, this, m_startX, m_startY, true);
    bool subsDone = true;
    for (int i = 0; i < m_subAnimCount; ++i) {
        SubAnim& sub = m_subAnims[i];
        // An unmapped sub-animation has nothing to move and never holds the dialog back.
        if (!sub.widget) continue;
        _uiAnimData_s& subRec = in ? sub.in : sub.out;
        sub.elapsed = uiAnim::step(sub.elapsed, subRec, sub.widget, sub.startX, sub.startY, false);
        subsDone = subsDone && sub.elapsed >= subRec.time;
    }
    m_elapsed = elapsed;
    if (m_elapsed >= rec.time && subsDone) setState(in ? UIS_IDLE : UIS_EXITED);
}

void uiAnimDialog::_render(int x, int y) {
    if (m_state == UIS_HIDDEN) {
        setVisible(false, true);
        return;
    }
    const bool in = m_state == UIS_IDLE || m_state == UIS_ENTERING;
    uiAnim::drawMask(in ? m_in : m_out, this, x, y);
    for (int i = 0; i < m_subAnimCount; ++i) {
        const SubAnim& sub = m_subAnims[i];
        uiAnim::drawMask(in ? sub.in : sub.out, sub.widget, rect.x + x, rect.y + y);
    }
}

bool uiAnimDialog::_inputEvent(e_uiEvent kind, int x, int y, int key, bool buttonDown, bool handled) {
    if (m_state != UIS_IDLE) return false;
    return uiDialog::_inputEvent(kind, x, y, key, buttonDown, handled);
}
