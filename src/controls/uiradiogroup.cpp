// uiRadioGroup: the group value, read from and written to the radio buttons below it.
#include "uiradiogroup.h"
#include <climits>
#include "parser.h"
#include "uiradiobutton.h"

UI_DEFINE_WIDGET(uiRadioGroup, uiNonVisualWidget, "uiradiogroup.h")

// ---- description keys -------------------------------------------------------------------------------

// The parser leaves the value as it was when the line is malformed; that must not select anything.
void uiRadioGroup::_parseParams(Parser* parser, char* key) {
    constexpr int kUnread = INT_MIN;
    int value = kUnread;
    if (!parser->ParamEqualsInt32(key, "value", &value))
        uiNonVisualWidget::_parseParams(parser, key);
    else if (value != kUnread)
        setValue(value);
}

// ---- group value ------------------------------------------------------------------------------------

// Nested groups are skipped: their buttons belong to them.
int uiRadioGroup::_getValue(const uiWidget* below) const {
    for (const _WidgetList_s* node = below->getChildren(); node; node = node->next) {
        uiWidget* child = node->widget;
        if (child->isType("uiRadioButton")) {
            const uiRadioButton* button = static_cast<const uiRadioButton*>(child);
            if (button->isSelected()) return button->getValue();
        } else if (!child->isType("uiRadioGroup")) {
            const int v = _getValue(child);
            if (v != -1) return v;
        }
    }
    return -1;
}

void uiRadioGroup::_setValue(const uiWidget* below, int value) {
    for (const _WidgetList_s* node = below->getChildren(); node; node = node->next) {
        uiWidget* child = node->widget;
        if (child->isType("uiRadioButton"))
            static_cast<uiRadioButton*>(child)->select(static_cast<uiRadioButton*>(child)->getValue() ==
                                                       value);
        else if (!child->isType("uiRadioGroup"))
            _setValue(child, value);
    }
}
