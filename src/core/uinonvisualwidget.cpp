#include "uinonvisualwidget.h"
#include "core/uiexactclass.h"

UI_DEFINE_WIDGET(uiNonVisualWidget, uiWidget, "uinonvisualwidget.h")

uiNonVisualWidget::uiNonVisualWidget() {
    ui::g_exactContainer.record(this);
}
