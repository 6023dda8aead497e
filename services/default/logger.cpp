// Log dispatch: formatting into a bounded buffer and handing the text to the installed sink. Calls into
// sinks are serialised by one recursive lock, so a sink may log itself and setSink() can wait for the old
// sink to be done.
#include "logger.h"
#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <mutex>
#include <new>
#include "neverdestroyed.h"

#if defined(_WIN32)
#include <io.h>
#define UI_ISATTY(f) _isatty(_fileno(f))
#else
#include <unistd.h>
#define UI_ISATTY(f) isatty(fileno(f))
#endif

namespace {

class StderrSink : public Logger::Sink {
public:
    constexpr StderrSink() = default;
    void write(int severity, const char* text) override {
        // Colour sequences are longer than the markup they replace.
        char rendered[3 * Logger::kMaxMessage];
        Logger::renderMarkup(text, UI_ISATTY(stderr) != 0, rendered, sizeof rendered);
        const char* label = severity >= Logger::kError     ? "error: "
                            : severity == Logger::kWarning ? "warning: "
                                                           : "";
        std::fprintf(stderr, "%s%s\n", label, rendered);
        std::fflush(stderr);
    }
};

ui::NeverDestroyed<StderrSink> s_builtinSink;
std::atomic<Logger::Sink*> s_sink{nullptr};
std::atomic<int> s_nextClientId{1};

// Never destroyed, so threads may still log while the program exits.
std::recursive_mutex& dispatchLock() {
    alignas(std::recursive_mutex) static unsigned char storage[sizeof(std::recursive_mutex)];
    static std::recursive_mutex* lock = new (storage) std::recursive_mutex;
    return *lock;
}

Logger::Sink& currentSink() {
    Logger::Sink* sink = s_sink.load();
    return sink ? *sink : s_builtinSink.value;
}

} // namespace

Logger::Sink::~Sink() = default;

int Logger::Sink::registerClient(const char*) {
    return s_nextClientId.fetch_add(1);
}

void Logger::log(int severity, const char* format, ...) {
    if (!format) return;
    char text[kMaxMessage];
    va_list args;
    va_start(args, format);
    int n = std::vsnprintf(text, sizeof text, format, args);
    va_end(args);
    if (n < 0) return;
    std::size_t formatLength = std::strlen(format);
    // A cut message still ends the way its format does, so sinks can rely on the final form feed.
    if (static_cast<std::size_t>(n) >= sizeof text && formatLength && format[formatLength - 1] == '\f')
        text[sizeof text - 2] = '\f';
    std::lock_guard<std::recursive_mutex> guard(dispatchLock());
    currentSink().write(severity, text);
}

int Logger::registerClient(const char* name) {
    std::lock_guard<std::recursive_mutex> guard(dispatchLock());
    return currentSink().registerClient(name ? name : "");
}

void Logger::setSink(Sink* sink) {
    std::lock_guard<std::recursive_mutex> guard(dispatchLock());
    s_sink.store(sink);
}

Logger::Sink* Logger::sink() {
    return s_sink.load();
}
