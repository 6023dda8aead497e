// The description keys and flag names every widget understands: the last link of the _parseParams and
// _parseSingleFlag chains.
#include <cstring>
#include "core/uidescvalue.h"
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"
#include "uidialog.h"
#include "uiwidget.h"

namespace {

struct FlagName {
    const char* name;
    unsigned int bit;
};
constexpr FlagName kBitFlags[] = {{"WF_ALPHA_TEST", WF_ALPHA_TEST},
                                  {"WF_ROOT_COORDS", WF_ROOT_COORDS},
                                  {"WF_IGNORE_ALPHA", WF_IGNORE_ALPHA}};

} // namespace

void uiWidget::_parseParams(Parser* parser, char* key) {
    if (ui::coordParam(parser, key, "x", &rect.x) || ui::coordParam(parser, key, "y", &rect.y) ||
        ui::coordParam(parser, key, "x2", &rect.x2) || ui::coordParam(parser, key, "y2", &rect.y2))
        return;
    // A malformed size leaves the far edge where it was.
    int size = rect.x2 - rect.x;
    if (ui::coordParam(parser, key, "width", &size)) {
        rect.x2 = ui::clampCoord(static_cast<long long>(rect.x) + size);
        return;
    }
    size = rect.y2 - rect.y;
    if (ui::coordParam(parser, key, "height", &size)) {
        rect.y2 = ui::clampCoord(static_cast<long long>(rect.y) + size);
        return;
    }
    if (ui::equalNoCase(key, "depth")) {
        if (const char* value = ui::nameAfterEquals(parser, "depth = val")) depth = _getDepthValue(value);
        return;
    }
    if (ui::equalNoCase(key, "flags")) {
        if (!ui::expectEquals(parser, "flags = FLAGS")) return;
        flags = 0; // state bits too, silently: the list says what the widget is
        _parseFlags(parser);
        return;
    }
    if (ui::equalNoCase(key, "inputfocus")) {
        if (ui::expectEquals(parser, "inputfocus = BOOLEAN")) setInputFocus(_parseBoolean(parser), true);
        return;
    }
    if (ui::equalNoCase(key, "active")) {
        if (ui::expectEquals(parser, "active = BOOLEAN")) setActive(_parseBoolean(parser), true);
        return;
    }
    if (ui::equalNoCase(key, "visible")) {
        if (ui::expectEquals(parser, "visible = BOOLEAN")) setVisible(_parseBoolean(parser), true);
        return;
    }
    if (ui::equalNoCase(key, "tabentry")) {
        // The valueless form: this widget joins the tab order of every dialog above it (the parent
        // pointer is already set while the block is read).
        for (uiWidget* w = parent; w; w = w->parent)
            if (w->isType("uiDialog")) static_cast<uiDialog*>(w)->addTabEntry(this);
        return;
    }
    if (ui::equalNoCase(key, "child")) {
        uiWidget* child = _parseChildHeader(parser, this);
        if (!child) {
            Logger::log(Logger::kError, "...failed to create child for: %s\f", name);
            return;
        }
        addChild(child, false); // the child keeps the states its own block gave it
        if (!children || children->widget != child) {
            // No list node (addChild has logged it): the child goes, and with it the tab entries that
            // its block gave the dialogs above.
            for (uiWidget* w = this; w; w = w->parent)
                if (w->isType("uiDialog")) static_cast<uiDialog*>(w)->removeTabEntries(child);
            delete child;
        }
        return;
    }
    if (ui::equalNoCase(key, "#scriptlet")) {
        if (const char* file = parser->GetToken(" "))
            applyScriptlet(file);
        else
            ui::logExpected("#scriptlet file");
        return;
    }
    if (ui::equalNoCase(key, "globalinputfocus")) {
        if (const char* path = ui::nameAfterEquals(parser, "globalinputfocus = val"))
            addGlobalInputFocusWidget(path);
        return;
    }
    Logger::log(Logger::kError, "...[%s:%d] Unknown parameter: ^C00FF00%s\f", name, parser->GetLineNumber(),
                key);
}

bool uiWidget::_parseBoolean(Parser* parser) {
    const char* token = parser->GetToken(" ");
    if (token && ui::equalNoCase(token, "true")) return true;
    if (!token || !ui::equalNoCase(token, "false"))
        Logger::log(Logger::kError, "...Expected: true or false\f");
    return false;
}

void uiWidget::_parseFlags(Parser* parser) {
    bool nameExpected = true;
    while (const char* token = parser->GetToken(" ")) {
        if (nameExpected) {
            _parseSingleFlag(token);
            nameExpected = false;
        } else if (std::strcmp(token, "|") == 0) {
            nameExpected = true;
        } else {
            Logger::log(Logger::kError, "Invalid syntax: expected \"|\"\f");
            return;
        }
    }
}

void uiWidget::_parseSingleFlag(const char* flagName) {
    if (ui::equalNoCase(flagName, "WF_VISIBLE")) return setVisible(true, true);
    if (ui::equalNoCase(flagName, "WF_ACTIVE")) return setActive(true, true);
    if (ui::equalNoCase(flagName, "WF_INPUT_FOCUS")) return setInputFocus(true, true);
    for (const FlagName& flag : kBitFlags)
        if (ui::equalNoCase(flagName, flag.name)) {
            flags |= flag.bit;
            return;
        }
    Logger::log(Logger::kError, "Unknown flag: %s\f", flagName);
}
