// uiFlowLayout: the layout pass that places the children in rows or columns on activation.
#include "uiflowlayout.h"
#include <climits>
#include "core/uidescvalue.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "logger.h"
#include "memorymgr.h"
#include "parser.h"

UI_DEFINE_WIDGET(uiFlowLayout, uiNonVisualWidget, "uiflowlayout.h")

uiFlowLayout::uiFlowLayout(const uiFlowLayout& other) : uiNonVisualWidget() {
    _copyLayout(other);
}

uiFlowLayout& uiFlowLayout::operator=(const uiFlowLayout& other) {
    if (this != &other) _copyLayout(other);
    return *this;
}

void uiFlowLayout::_copyLayout(const uiFlowLayout& other) {
    _copyWidgetFields(other);
    flowType = other.flowType;
    width = other.width;
    height = other.height;
    minSpaceX = other.minSpaceX;
    minSpaceY = other.minSpaceY;
    spaceEvenly = other.spaceEvenly;
    cursorX = other.cursorX;
    cursorY = other.cursorY;
    spaceX = other.spaceX;
    spaceY = other.spaceY;
    lineExtent = other.lineExtent;
}

// ---- description keys -------------------------------------------------------------------------------

void uiFlowLayout::_parseParams(Parser* parser, char* key) {
    if (ui::equalNoCase(key, "FlowType")) {
        constexpr const char* kForm = "flowtype = vertical | horizontal";
        const char* value = parser->GetEqualsToken() ? parser->GetToken(" ") : nullptr;
        if (value && ui::equalNoCase(value, "VERTICAL"))
            setFlowType(VERTICAL);
        else if (value && ui::equalNoCase(value, "HORIZONTAL"))
            setFlowType(HORIZONTAL);
        else
            ui::logExpected(kForm);
        return;
    }
    if (parser->ParamEqualsInt32(key, "Width", &width) || parser->ParamEqualsInt32(key, "Height", &height) ||
        parser->ParamEqualsInt32(key, "MinSpaceX", &minSpaceX) ||
        parser->ParamEqualsInt32(key, "MinSpaceY", &minSpaceY) ||
        parser->ParamEqualsBoolean(key, "SpaceEvenly", &spaceEvenly))
        return;
    uiWidget::_parseParams(parser, key);
}

// ---- state hooks ------------------------------------------------------------------------------------

void uiFlowLayout::setActive(bool active, bool recurse) {
    if (recurse)
        for (const _WidgetList_s* node = children; node; node = node->next)
            if (!node->widget->getOverrideActive() && !node->widget->isType("uiDialog"))
                node->widget->setActive(active, true);
    _setOwnState(WF_ACTIVE, active);
}

void uiFlowLayout::_activate() {
    int count = 0;
    for (const _WidgetList_s* node = children; node; node = node->next)
        ++count;
    if (count == 0) return;
    void* block = g_MemoryPtr
                      ? g_MemoryPtr->alloc(kBufPool, static_cast<unsigned int>(count * sizeof(uiWidget*)),
                                           __FILE__, __LINE__)
                      : nullptr;
    if (!block) {
        // The children keep the places they had; the next activation tries again.
        Logger::log(Logger::kError, "%s::_activate(): Out of Memory\f", name);
        return;
    }
    // The child list holds the newest first; the pass goes in the order the children were added.
    uiWidget** items = static_cast<uiWidget**>(block);
    int i = count;
    for (const _WidgetList_s* node = children; node; node = node->next)
        items[--i] = node->widget;

    spaceX = minSpaceX;
    spaceY = minSpaceY;
    if (spaceEvenly)
        _placeSpreadRows(items, count);
    else
        for (i = 0; i < count; ++i)
            _layoutChild(items[i]);
    cursorX = cursorY = lineExtent = 0;
    g_MemoryPtr->free(kBufPool, block);
}

// Gathers each row (column) while it stays strictly below the limit, widens its gap to fill the limit,
// then places it. A row of one keeps the gap of the row before.
void uiFlowLayout::_placeSpreadRows(uiWidget** items, int count) {
    const bool horizontal = flowType == HORIZONTAL;
    const int limit = horizontal ? width : height;
    const int minGap = horizontal ? minSpaceX : minSpaceY;
    int& gap = horizontal ? spaceX : spaceY;
    auto flowSize = [horizontal](uiWidget* w) { return horizontal ? w->getWidth() : w->getHeight(); };

    for (int start = 0; start < count;) {
        long long total = flowSize(items[start]);
        int end = start + 1;
        for (; end < count; ++end) {
            const long long size = static_cast<long long>(flowSize(items[end])) + minGap;
            if (total + size >= limit) break;
            total += size;
        }
        const int k = end - start;
        if (k >= 2) gap = ui::clampToInt((limit - total) / (k - 1));
        for (; start < end; ++start)
            _layoutChild(items[start]);
    }
}

bool uiFlowLayout::_layoutChild(uiWidget* child) {
    const int w = child->getWidth(), h = child->getHeight();
    bool newLine = false;
    if (flowType == HORIZONTAL && width != 0 && cursorX != 0 && static_cast<long long>(cursorX) + w > width) {
        cursorX = 0;
        cursorY = ui::clampToInt(static_cast<long long>(cursorY) + spaceY + lineExtent);
        lineExtent = 0;
        newLine = true;
    } else if (flowType == VERTICAL && height != 0 && cursorY != 0 &&
               static_cast<long long>(cursorY) + h > height) {
        cursorY = 0;
        cursorX = ui::clampToInt(static_cast<long long>(cursorX) + spaceX + lineExtent);
        lineExtent = 0;
        newLine = true;
    }
    child->rect.x = ui::clampCoord(cursorX);
    child->rect.y = ui::clampCoord(cursorY);
    child->setWidth(w);
    child->setHeight(h);
    const int right = ui::clampCoord(static_cast<long long>(cursorX) + w);
    const int bottom = ui::clampCoord(static_cast<long long>(cursorY) + h);
    if (right > rect.x2) rect.x2 = right;
    if (bottom > rect.y2) rect.y2 = bottom;
    if (flowType == HORIZONTAL) {
        if (h > lineExtent) lineExtent = h;
        cursorX = ui::clampToInt(static_cast<long long>(cursorX) + w + spaceX);
    } else {
        if (w > lineExtent) lineExtent = w;
        cursorY = ui::clampToInt(static_cast<long long>(cursorY) + h + spaceY);
    }
    return newLine;
}
