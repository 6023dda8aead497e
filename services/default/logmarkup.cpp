// Turning the log's colour markup into terminal colours, or removing it, for the built-in sink.
#include <cstdio>
#include "logger.h"

namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// Reads "RRGGBB" after "^C"; false when the six digits are not all there.
bool readColour(const char* s, int rgb[3]) {
    for (int i = 0; i < 3; ++i) {
        int hi = hexDigit(s[2 * i]), lo = hi < 0 ? -1 : hexDigit(s[2 * i + 1]);
        if (lo < 0) return false;
        rgb[i] = hi * 16 + lo;
    }
    return true;
}

class Output {
public:
    Output(char* out, std::size_t capacity) : m_out(out), m_capacity(capacity) {}
    void put(const char* s, std::size_t n) {
        for (std::size_t i = 0; i < n && m_length + 1 < m_capacity; ++i)
            m_out[m_length++] = s[i];
    }
    std::size_t finish() {
        if (m_capacity) m_out[m_length] = '\0';
        return m_length;
    }

private:
    char* m_out;
    std::size_t m_capacity;
    std::size_t m_length = 0;
};

} // namespace

std::size_t Logger::renderMarkup(const char* text, bool ansi, char* out, std::size_t capacity) {
    Output o(out, capacity);
    for (const char* s = text ? text : ""; *s; ++s) {
        int rgb[3];
        if (s[0] == '^' && s[1] == 'C' && readColour(s + 2, rgb)) {
            if (ansi) {
                char seq[24];
                int n = std::snprintf(seq, sizeof seq, "\x1b[38;2;%d;%d;%dm", rgb[0], rgb[1], rgb[2]);
                o.put(seq, static_cast<std::size_t>(n));
            }
            s += 7;
        } else if (s[0] == '^' && s[1] == 'c') {
            if (ansi) o.put("\x1b[0m", 4);
            ++s;
        } else if (!(s[0] == '\f' && s[1] == '\0')) {
            o.put(s, 1);
        }
    }
    return o.finish();
}
