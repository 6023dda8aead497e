#include "core/uiloadnesting.h"
#include "core/uiutil.h"
#include "logger.h"
#include "parser.h"
#include "uiloadplace.h"

namespace ui {
namespace {

struct Level {
    const char* file;     // null for an object level
    const Parser* parser; // reads `file`, once known
};

// Plain arrays, so that a thread's stack needs no allocation and no construction.
thread_local Level t_levels[kMaxNesting];
thread_local int t_depth = 0;

// The innermost file being read and its current line, for messages.
void location(const char** file, int* line) {
    *file = "(text)";
    *line = 0;
    for (int i = t_depth - 1; i >= 0; --i) {
        if (!t_levels[i].file) continue;
        *file = t_levels[i].file;
        if (t_levels[i].parser) *line = t_levels[i].parser->GetLineNumber();
        return;
    }
}

bool isBeingRead(const char* file) {
    for (int i = 0; i < t_depth; ++i)
        if (t_levels[i].file && equalNoCase(t_levels[i].file, file)) return true;
    return false;
}

} // namespace

NestingLevel::NestingLevel(Kind kind, const char* name) {
    const char* where;
    int line;
    if (kind == File && isBeingRead(name)) {
        location(&where, &line);
        Logger::log(Logger::kError, "...[%s:%d] include cycle: ^C00FF00%s^c is already being read; skipped\f",
                    where, line, name);
        return;
    }
    if (t_depth >= kMaxNesting) {
        location(&where, &line);
        Logger::log(Logger::kError, "...[%s:%d] nesting deeper than %d levels: ^C00FF00%s^c skipped\f", where,
                    line, kMaxNesting, name);
        return;
    }
    t_levels[t_depth++] = {kind == File ? name : nullptr, nullptr};
    m_entered = true;
}

NestingLevel::~NestingLevel() {
    if (m_entered) --t_depth;
}

void NestingLevel::setParser(const Parser* parser) {
    if (t_depth > 0 && t_levels[t_depth - 1].file) t_levels[t_depth - 1].parser = parser;
}

} // namespace ui

bool uiLoadPlace(const char** file, int* line) {
    for (int i = ui::t_depth - 1; i >= 0; --i) {
        if (!ui::t_levels[i].file || !ui::t_levels[i].parser) continue;
        *file = ui::t_levels[i].file;
        *line = ui::t_levels[i].parser->GetLineNumber();
        return true;
    }
    *file = "";
    *line = 0;
    return false;
}
