// Placeholder until the description parser lands: loading yields nothing.
#include "uiwidget.h"

void uiWidget::applyScriptlet(const char*) {}
bool uiWidget::_parseBoolean(Parser*) { return false; }
void uiWidget::_parseParams(Parser*, char*) {}
void uiWidget::_parseFlags(Parser*) {}
void uiWidget::_parseSingleFlag(const char*) {}
uiWidget* uiWidget::loadUI(const char*, uiWidget*) { return nullptr; }
uiWidget* uiWidget::parseObjHeader(Parser*, uiWidget*) { return nullptr; }
void uiWidget::parse(Parser*, bool) {}
void uiWidget::s_freeScripletCache() {}
