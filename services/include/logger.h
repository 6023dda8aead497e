// The log service. log() formats printf-style and hands the whole text, colour markup and final form
// feed intact, to the sink. Severity 1 is a warning, 2 an error.
//
// Colour markup: "^C" and six hexadecimal digits (RRGGBB) start a colour, "^c" ends it. The built-in
// sink writes to stderr: 24-bit colours on a terminal, markup stripped otherwise. Sinks may be called
// from several threads; calls into the sink are serialised.
#pragma once
#include <cstddef>
#include "uiapi.h"

class UI_API Logger {
public:
    // Where messages go: a game installs its own with setSink.
    class UI_API Sink {
    public:
        virtual ~Sink();
        virtual void write(int severity, const char* text) = 0; // one whole message, markup intact
        virtual int registerClient(const char* name);           // default: a process-wide id counting from 1
    };
    // Severities: the library logs warnings and errors; games may log plain information too.
    static constexpr int kInfo = 0;
    static constexpr int kWarning = 1;
    static constexpr int kError = 2;
    static constexpr std::size_t kMaxMessage = 4096; // longer messages are cut, keeping the final form feed

    // Logs a message (0 information, 1 warning, 2 error).
    static void log(int severity, const char* format, ...)
#if defined(__GNUC__)
        __attribute__((format(printf, 2, 3)))
#endif
        ;
    static int registerClient(const char* name); // asks the sink for an id for a named client
    static void setSink(Sink* sink); // null: built-in sink (stderr); returns once no call uses the old one
    static Sink* sink();             // the installed sink, null for the built-in one

    // Writes text into out (capacity bytes, always 0-ended, cut when short) with the colour markup turned
    // into ANSI 24-bit colour sequences (ansi) or removed, and a final form feed dropped. Returns the
    // length written. Malformed markup is kept as it stands.
    static std::size_t renderMarkup(const char* text, bool ansi, char* out, std::size_t capacity);
};
