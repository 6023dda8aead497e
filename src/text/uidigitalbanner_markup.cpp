// uiDigitalBanner: parsing the message markup into pieces, and measuring texts.
#include <cstdlib>
#include <cstring>
#include "core/uinumeric.h"
#include "core/uiutil.h"
#include "logger.h"
#include "uidigitalbanner.h"

namespace {

// The markup words, indexed by their action value.
const char kActionWords[7][32] = {"ON", "OFF", "FLASH", "LEFT", "RIGHT", "UP", "DOWN"};

pieceAction_t actionOf(const char* word) {
    for (int i = 0; i < 7; ++i)
        if (word && std::strcmp(word, kActionWords[i]) == 0) return static_cast<pieceAction_t>(i);
    return PA_NONE;
}

// What rejected a message: the delimiter named in the log line, or an unknown action word.
struct Fault {
    const char* delimiter = nullptr; // "^p", "^P", "|" or ";"
    const char* word = nullptr;      // the unknown action word
    bool any() const { return delimiter || word; }
};

// Finds the piece that starts at `from`. Returns false at the end of the pieces; a "^p" missing or
// before its "^P", or another "^P" before the "^p" (also the case when anything stands before the
// piece's "^P"), is a fault.
bool nextPiece(char* from, char** open, char** close, Fault* fault) {
    *open = std::strstr(from, "^P");
    if (!*open) return false;
    *close = std::strstr(from, "^p");
    if (!*close || *close < *open) {
        fault->delimiter = "^p";
        return false;
    }
    const char* inner = std::strstr(from + 1, "^P");
    if (inner && inner < *close) {
        fault->delimiter = "^P";
        return false;
    }
    return true;
}

// Reads the parts of one piece, each cut at its delimiter, from just after its "^P". The piece's
// closing "^p" is already cut off, so no search leaves the piece.
class PieceReader {
public:
    explicit PieceReader(char* cursor) : m_cursor(cursor) {}

    bool piece(dbMessagePiece_t* piece) {
        if (*m_cursor != '|') return fail("|");
        ++m_cursor;
        if (!phase(&piece->in)) return false;
        const char* text = field(';');
        if (!text) return false;
        ui::copyName(piece->text, text);
        return integer('|', &piece->hold) && phase(&piece->out);
    }

    const Fault& fault() const { return m_fault; }

private:
    bool phase(dbPieceAction_t* phase) {
        const char* word = field(';');
        if (!word) return false;
        phase->action = actionOf(word);
        if (phase->action == PA_NONE) {
            m_fault.word = word;
            return false;
        }
        if (phase->action == PA_FLASH && !integer(';', &phase->flashes)) return false;
        return integer(';', &phase->delay) && integer('|', &phase->duration);
    }

    // The text up to the delimiter, which is cut off; null (and a fault naming the delimiter) without it.
    char* field(char delimiter) {
        char* end = std::strchr(m_cursor, delimiter);
        if (!end) {
            fail(delimiter == ';' ? ";" : "|");
            return nullptr;
        }
        *end = '\0';
        char* start = m_cursor;
        m_cursor = end + 1;
        return start;
    }

    // Blanks, sign and a decimal, 0x-hexadecimal or 0-octal number; the rest of the field is ignored.
    bool integer(char delimiter, int* value) {
        const char* start = field(delimiter);
        if (!start) return false;
        char* end = nullptr;
        const long long v = std::strtoll(start, &end, 0);
        if (end == start && !bareHexPrefix(start)) return fail(delimiter == ';' ? ";" : "|");
        *value = ui::clampToInt(v);
        return true;
    }

    // "0x" without a hexadecimal digit is the number 0 followed by text. The Windows C library's
    // strtoll takes nothing from it, unlike glibc's, so it is recognised here on every platform.
    static bool bareHexPrefix(const char* s) {
        s += std::strspn(s, " \t\n\v\f\r");
        if (*s == '+' || *s == '-') ++s;
        return s[0] == '0' && (s[1] == 'x' || s[1] == 'X');
    }

    bool fail(const char* delimiter) {
        m_fault.delimiter = delimiter;
        return false;
    }

    char* m_cursor;
    Fault m_fault;
};

} // namespace

pieceAction_t uiDigitalBanner::_getAction(const char* word) {
    return actionOf(word);
}

int uiDigitalBanner::_strlen(const char* text) {
    long long total = 0;
    for (const unsigned char* c = reinterpret_cast<const unsigned char*>(text); c && *c; ++c)
        total += charWidths[*c];
    return ui::clampToInt(total);
}

void uiDigitalBanner::_extractMessage(char* text, dbMessage_t* message) {
    if (!message) return;
    _releasePieces(message); // a message parsed again starts afresh
    if (!text || !*text) {
        _removeMessage(message);
        return;
    }

    Fault fault;
    unsigned long long count = 0;
    char *open, *close;
    for (char* from = text; nextPiece(from, &open, &close, &fault); from = close + 2)
        ++count;
    if (!fault.any() && count > 0) {
        const unsigned long long bytes = count * sizeof(dbMessagePiece_t);
        void* block = bytes <= 0xFFFFFFFFull
                          ? g_MemoryPtr->alloc(kUIPool, static_cast<unsigned int>(bytes), __FILE__, __LINE__)
                          : nullptr;
        if (!block) {
            Logger::log(Logger::kError, "Digital Banner could not add message: Out of memory.\f");
            _removeMessage(message);
            return;
        }
        std::memset(block, 0, static_cast<std::size_t>(bytes));
        message->pieces = static_cast<dbMessagePiece_t*>(block);
        message->pieceCount = static_cast<unsigned int>(count);
    }

    long long length = 0;
    char* from = text;
    for (unsigned int i = 0; i < message->pieceCount && !fault.any(); ++i) {
        nextPiece(from, &open, &close, &fault); // found by the counting pass
        *close = '\0';
        PieceReader reader(open + 2);
        if (reader.piece(&message->pieces[i])) length += _strlen(message->pieces[i].text);
        fault = reader.fault();
        from = close + 2;
    }

    if (fault.word)
        Logger::log(Logger::kError,
                    "Digital Banner message could not be added: Invalid Piece Action ('%s').\f", fault.word);
    else if (fault.delimiter)
        Logger::log(Logger::kError, "Digital Banner message could not be added: Invalid Syntax ('%s').\f",
                    fault.delimiter);
    else if (length > width)
        Logger::log(Logger::kError,
                    "Digital Banner message could not be added: Message Length Exceeds Banner Width.\f");
    else {
        message->length = static_cast<int>(length);
        return;
    }
    _removeMessage(message);
}
