// Boolean keys of derived classes ("smooth = true"), read the same way by every control.
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"
#include "uiwidget.h"

bool uiWidget::_parseBooleanKey(Parser* parser, const char* key, const char* keyName, bool* value) {
    if (!ui::equalNoCase(key, keyName)) return false;
    if (parser->GetEqualsToken())
        *value = _parseBoolean(parser);
    else
        Logger::log(2, "...expected: \"^C00FF00%s = BOOLEAN^c\"\f", keyName);
    return true;
}
