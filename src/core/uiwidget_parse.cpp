// Loading UI descriptions: files, object headers and object blocks. The keys of a block are read by the
// _parseParams chain (uiwidget_params.cpp for the keys every widget understands).
#include <cstring>
#include "core/uidescvalue.h"
#include "core/uiloadnesting.h"
#include "core/uitextfile.h"
#include "logger.h"
#include "parser.h"
#include "platform.h"
#include "uiloadplace.h"
#include "uiwidget.h"

uiWidget* uiWidget::loadUI(const char* file, uiWidget* parent) {
    ui::NestingLevel level(ui::NestingLevel::File, file);
    if (!level.entered()) return nullptr;
    unsigned int length = 0;
    unsigned char* text = ui::readTextFile(file, &length);
    if (!text) return nullptr;
    uiWidget* root = _parseUI(text, static_cast<int>(length), parent);
    ui::freeTextFile(text);
    return root;
}

uiWidget* uiWidget::_parseUI(unsigned char* text, int, uiWidget* parent) {
    Parser parser(reinterpret_cast<char*>(text));
    ui::NestingLevel::setParser(&parser);
    uiWidget* root = parseObjHeader(&parser, parent);
    if (s_terminate) {
        delete root; // and with it everything built so far
        return nullptr;
    }
    return root;
}

uiWidget* uiWidget::parseObjHeader(Parser* parser, uiWidget* parent) {
    if (!parser->ParseLine()) return nullptr;
    do {
        Platform::Sleep(0); // loading may run beside the frame thread: give it a turn
        if (uiWidget* widget = _parseChildHeader(parser, parent)) return widget;
    } while (!s_terminate && parser->ParseLine());
    return nullptr;
}

uiWidget* uiWidget::_parseChildHeader(Parser* parser, uiWidget* parent) {
    char* objName = parser->GetToken(" ");
    if (!objName) {
        ui::logExpected("obj = type");
        return nullptr;
    }
    if (objName[0] == '#') return loadUI(objName + 1, parent);
    char* type = parser->GetEqualsToken() ? parser->GetToken(" ") : nullptr;
    if (!type) {
        ui::logExpected("obj = type");
        return nullptr;
    }

    ui::NestingLevel level(ui::NestingLevel::Object, objName);
    if (!level.entered()) return nullptr;
    uiWidget* widget = allocWidget(objName, type);
    _progressReport(widget, UIPROG_CREATED);
    if (!widget) {
        Logger::log(Logger::kError, "...failed to alloc widget: %s of type %s\f", objName, type);
        return nullptr;
    }
    // Known before the block is read, so that "#parent" depths and "tabentry" can look upward.
    widget->parent = parent;
    widget->parse(parser, false);
    _progressReport(widget, UIPROG_DONE);
    return widget;
}

void uiWidget::parse(Parser* parser, bool blockOpen) {
    bool inComment = false;
    bool inBlock = false;
    int commentLine = 0;
    int blockLine = parser->GetLineNumber();
    while (!s_terminate && parser->ParseLine()) {
        char* token = parser->GetToken(" ");
        if (!token) continue;
        if (std::strcmp(token, "/*") == 0) {
            inComment = true;
            commentLine = parser->GetLineNumber();
            continue;
        }
        if (std::strcmp(token, "*/") == 0) {
            inComment = false;
            continue;
        }
        if (inComment) continue;
        if (std::strcmp(token, "{") == 0) {
            inBlock = true;
            blockLine = parser->GetLineNumber();
            continue;
        }
        if (std::strcmp(token, "}") == 0) return;
        if (blockOpen || inBlock) {
            _parseParams(parser, token);
            _progressReport(this, UIPROG_PARAM);
        }
    }
    if (s_terminate) return;
    // The text ran out: whatever the block read stays, but a designer wants to hear about it.
    const char* file;
    int line;
    uiLoadPlace(&file, &line);
    if (inComment)
        Logger::log(Logger::kError, "...[%s:%d] comment never closed: ^C00FF00*/^c missing\f", file,
                    commentLine);
    if (!blockOpen)
        Logger::log(Logger::kError, "...[%s:%d] block of ^CFFFF00%s^c never closed: ^C00FF00}^c missing\f",
                    file, blockLine, name);
}

void uiWidget::_parseError(const char* expected) {
    ui::logExpected(expected, false);
}
