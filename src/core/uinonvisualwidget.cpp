#include "uinonvisualwidget.h"

UI_DEFINE_WIDGET(uiNonVisualWidget, uiWidget, "uinonvisualwidget.h")
