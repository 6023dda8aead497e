// Boolean keys of derived classes ("smooth = true"), read the same way by every control.
#include <cstdio>
#include "core/uidescvalue.h"
#include "core/uiutil.h"
#include "uiwidget.h"

bool uiWidget::_parseBooleanKey(Parser* parser, const char* key, const char* keyName, bool* value) {
    if (!ui::equalNoCase(key, keyName)) return false;
    char form[64];
    std::snprintf(form, sizeof form, "%s = BOOLEAN", keyName);
    if (ui::expectEquals(parser, form)) *value = _parseBoolean(parser);
    return true;
}
