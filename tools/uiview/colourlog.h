// A log sink for a terminal: colour markup (^CRRGGBB ... ^c) becomes terminal colours, warnings and
// errors are tagged, and the closing form feed becomes a line end.
#pragma once
#include "logger.h"

class ColourLog : public Logger::Sink {
public:
    explicit ColourLog(bool colours) : m_colours(colours) {}
    void write(int severity, const char* text) override;

private:
    bool m_colours;
};
