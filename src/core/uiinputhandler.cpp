#include "core/uiinputhandler.h"

UI_DEFINE_WIDGET(uiInputHandler, uiNonVisualWidget, "uiinputhandler.h")
