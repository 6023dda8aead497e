// The widget type registry: one static table of type names and allocators. The built-in types occupy
// slots 0 to 19; games append their own with uiSubsystem::s_registerWidget.
#include <cstring>
#include "core/uiinputhandler.h"
#include "core/uiutil.h"
#include "runtime/uianimdialog.h"
#include "runtime/uianimwidget.h"
#include "logger.h"
#include "uibutton.h"
#include "uidialog.h"
#include "uidigitalbanner.h"
#include "uientrywidget.h"
#include "uiflowlayout.h"
#include "uigamecontainer.h"
#include "uinonvisualwidget.h"
#include "uiparticlesystem.h"
#include "uiprogressbar.h"
#include "uiradiobutton.h"
#include "uiradiogroup.h"
#include "uisliderbutton.h"
#include "uisprite.h"
#include "uisubsystem.h"
#include "uitextwidget.h"
#include "uitogglebutton.h"
#include "uivisualwidget.h"
#include "uiwidget.h"

namespace {

constexpr int kSlots = 256;
constexpr int kBuiltInSlots = 20;

struct TypeSlot {
    char name[32];
    uiWidget* (*allocator)();
};

struct TypeTable {
    TypeSlot slots[kSlots] = {};
    int used = kBuiltInSlots;

    // Built-in types at their fixed ids; the description format names them.
    TypeTable() {
        slots[0] = {"uiWidget", nullptr};
        slots[1] = {"uiNonVisualWidget", &uiNonVisualWidget::s_allocator};
        slots[2] = {"uiInputHandler", &uiInputHandler::s_allocator};
        slots[3] = {"uiVisualWidget", &uiVisualWidget::s_allocator};
        slots[4] = {"uiButton", &uiButton::s_allocator};
        slots[5] = {"uiToggleButton", &uiToggleButton::s_allocator};
        slots[6] = {"uiSprite", &uiSprite::s_allocator};
        slots[7] = {"uiTextWidget", &uiTextWidget::s_allocator};
        slots[8] = {"uiEntryWidget", &uiEntryWidget::s_allocator};
        slots[9] = {"uiRadioButton", &uiRadioButton::s_allocator};
        slots[10] = {"uiRadioGroup", &uiRadioGroup::s_allocator};
        slots[11] = {"uiSliderButton", &uiSliderButton::s_allocator};
        slots[12] = {"uiProgressBar", &uiProgressBar::s_allocator};
        slots[13] = {"uiParticleSystem", &uiParticleSystem::s_allocator};
        slots[14] = {"uiDigitalBanner", &uiDigitalBanner::s_allocator};
        slots[15] = {"uiDialog", &uiDialog::s_allocator};
        slots[16] = {"uiAnimDialog", &uiAnimDialog::s_allocator};
        slots[17] = {"uiFlowLayout", &uiFlowLayout::s_allocator};
        slots[18] = {"uiGameContainer", &uiGameContainer::s_allocator};
        slots[19] = {"uiAnimWidget", &uiAnimWidget::s_allocator};
    }
};

TypeTable& typeTable() {
    static TypeTable table;
    return table;
}

} // namespace

int uiWidget::getTypeId(const char* typeName) {
    const TypeTable& table = typeTable();
    for (int i = 1; i < table.used; ++i)
        if (table.slots[i].allocator && std::strcmp(table.slots[i].name, typeName) == 0) return i;
    return 0;
}

uiWidget* uiWidget::allocWidget(const char* widgetName, const char* typeName) {
    const int id = getTypeId(typeName);
    if (id == 0) {
        Logger::log(Logger::kError, "...attempt to instance an invalid ui type: \"%s\"\f", typeName);
        return nullptr;
    }
    uiWidget* widget = typeTable().slots[id].allocator();
    if (!widget) {
        Logger::log(Logger::kError, "...Out of memory allocating widget: %s of type %s\f", widgetName,
                    typeName);
        return nullptr;
    }
    ui::copyName(widget->name, widgetName);
    return widget;
}

void uiSubsystem::s_registerWidget(const char* typeName, uiWidget* (*allocator)()) {
    TypeTable& table = typeTable();
    if (!allocator) {
        Logger::log(Logger::kError, "uiSubsystem::s_registerWidget: %s has no allocator. Skipping.\f",
                    typeName);
        return;
    }
    if (table.used >= kSlots - 1) {
        Logger::log(Logger::kError, "uiSubsystem::s_registerWidget: Maximum Widget Count Exceeded: %s\f",
                    typeName);
        return;
    }
    if (uiWidget::getTypeId(typeName) != 0) {
        Logger::log(Logger::kError, "uiSubsystem::s_registerWidget: %s already registered. Skipping.\f",
                    typeName);
        return;
    }
    TypeSlot& slot = table.slots[table.used++];
    ui::copyName(slot.name, typeName);
    slot.allocator = allocator;
    table.slots[table.used] = TypeSlot{};
}
