// uiFlowLayout: an invisible container that places its children in rows or columns.
//
// Each time the layout goes from inactive to active it activates its children first (so their sizes are
// known), then places them in the order they were added: left to right in rows (HORIZONTAL) that break
// before a child would pass `width`, or top to bottom in columns (VERTICAL) that break before `height`;
// a limit of 0 never breaks. A child at the start of a row always stays in it. Neighbours are
// minSpaceX / minSpaceY apart; with SpaceEvenly each row (column) is first gathered while it stays
// strictly below the limit and its gaps are then widened to spread it over the limit. Placing sets each
// child's position and size (its positions from the description are lost) and grows, never shrinks, the
// layout's own rectangle to cover the children. Children added or resized later are placed by the next
// activation.
//
// Description keys (then those of uiWidget):
//   FlowType = HORIZONTAL | VERTICAL
//   Width = int            row length limit (HORIZONTAL); 0: one row
//   Height = int           column length limit (VERTICAL); 0: one column
//   MinSpaceX = int        horizontal gap between neighbours
//   MinSpaceY = int        vertical gap between neighbours
//   SpaceEvenly = BOOLEAN  spread each row (column) over the limit
#pragma once
#include "uinonvisualwidget.h"

class UI_API uiFlowLayout : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(uiFlowLayout)

public:
    // Rows from left to right, or columns from top to bottom.
    enum flowType_e { HORIZONTAL = 0, VERTICAL = 1 };

    uiFlowLayout() = default;
    // A copy takes the settings and widget fields but neither the tree links nor the children.
    uiFlowLayout(const uiFlowLayout& other);
    uiFlowLayout& operator=(const uiFlowLayout& other);

    // The direction.
    flowType_e getFlowType() const { return flowType; }
    void setFlowType(flowType_e type) { flowType = type; } // places nothing again

    using uiWidget::setActive;
    // Children first, then the layout itself, so that the pass sees active children.
    void setActive(bool active, bool recurse) override;

protected:
    void _parseParams(Parser* parser, char* key) override;
    void _activate() override; // the layout pass

    // Added virtual operation: places one child; true when it started a new row (column).
    virtual bool _layoutChild(uiWidget* child);

private:
    void _copyLayout(const uiFlowLayout& other);
    void _placeSpreadRows(uiWidget** items, int count);

public:
    // Fields, in declared order.
    flowType_e flowType = HORIZONTAL;
    int width = 0;
    int height = 0;
    int minSpaceX = 0;
    int minSpaceY = 0;
    bool spaceEvenly = false;
    int cursorX = 0, cursorY = 0; // where the next child goes during a pass
    int spaceX = 0, spaceY = 0;   // gaps of the running (or last) pass
    int lineExtent = 0;           // deepest child of the current row (column)
};
