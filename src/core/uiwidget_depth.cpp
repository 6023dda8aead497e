// The depth name table: 96 named layers; "0" to "31" exist from the start.
#include <cstdio>
#include "core/uiutil.h"
#include "logger.h"
#include "uiwidget.h"

namespace {

struct DepthTable {
    char names[uiWidget::kDepthSlots][32] = {};
    DepthTable() {
        for (int i = 0; i < 32; ++i)
            std::snprintf(names[i], sizeof names[i], "%d", i);
    }
};

DepthTable& depthTable() {
    static DepthTable table;
    return table;
}

} // namespace

void uiWidget::defineDepth(const char* depthName, unsigned int index) {
    if (index < kDepthSlots) ui::copyName(depthTable().names[index], depthName);
}

const char* uiWidget::s_getDepthName(unsigned int index) {
    return index < kDepthSlots ? depthTable().names[index] : "";
}

int uiWidget::s_getDepthValue(const char* depthName) {
    for (unsigned int i = 0; i < kDepthSlots; ++i)
        if (ui::equalNoCase(depthTable().names[i], depthName)) return static_cast<int>(i);
    Logger::log(Logger::kWarning, "Unknown depth value: %s\f", depthName);
    return kDepthSlots;
}

int uiWidget::_getDepthValue(const char* depthName) {
    if (ui::equalNoCase(depthName, "#parent")) {
        if (parent) return static_cast<int>(parent->depth);
        Logger::log(Logger::kWarning, "Depth %s invalid for top-level widget.\f", depthName);
        return 0;
    }
    return s_getDepthValue(depthName);
}

void uiWidget::setDepth(const char* depthName) {
    depth = static_cast<unsigned int>(_getDepthValue(depthName));
}
