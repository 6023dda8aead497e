// The log service. log() formats printf-style and hands the whole text, colour markup and final form
// feed intact, to the sink. Severity 1 is a warning, 2 an error.
#pragma once
#include "uiapi.h"

class UI_API Logger {
public:
    class UI_API Sink {
    public:
        virtual ~Sink();
        virtual void write(int severity, const char* text) = 0;
        virtual int registerClient(const char* name);
    };
    static void log(int severity, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    static int registerClient(const char* name);
    static void setSink(Sink* sink); // null: built-in sink (stderr)
};
