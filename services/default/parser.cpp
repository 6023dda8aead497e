// The line tokenizer. Lines and tokens are cut in place: a 0 is written where a line or a token ends.
#include "parser.h"
#include <cstring>

namespace {

char s_empty[1] = {'\0'};

// Delimiter sets are a character or two: a plain loop beats a library call per character.
bool isBlank(char c, const char* delimiters) {
    if (c == ' ' || c == '\t') return true;
    if (c && delimiters)
        for (const char* d = delimiters; *d; ++d)
            if (*d == c) return true;
    return false;
}

char* skipBlanks(char* p, const char* delimiters) {
    while (isBlank(*p, delimiters))
        ++p;
    return p;
}

// p is on the opening quote: the token runs to the closing quote, or to the end of the line without one.
char* takeQuoted(char*& p) {
    char* token = ++p;
    while (*p && *p != '"')
        ++p;
    if (*p) *p++ = '\0';
    return token;
}

} // namespace

Parser::Parser(char* text) : m_next(text) {}

Parser::~Parser() = default;

bool Parser::ParseLine() {
    if (!m_next || !*m_next) {
        m_cursor = m_next;
        return false;
    }
    char* line = m_next;
    char* end = line;
    while (*end && *end != '\n' && *end != '\r')
        ++end;
    if (end[0] == '\r' && end[1] == '\n')
        m_next = end + 2;
    else
        m_next = *end ? end + 1 : end;
    *end = '\0';
    m_cursor = line;
    ++m_lineNumber;
    return true;
}

char* Parser::GetToken(const char* delimiters) {
    if (!m_cursor) return nullptr;
    m_cursor = skipBlanks(m_cursor, delimiters);
    if (!*m_cursor) return nullptr;
    if (*m_cursor == '"') return takeQuoted(m_cursor);
    char* token = m_cursor;
    while (*m_cursor && !isBlank(*m_cursor, delimiters))
        ++m_cursor;
    if (*m_cursor) *m_cursor++ = '\0';
    return token;
}

// An "=" is taken even when the value follows it without a blank ("x =5").
bool Parser::GetEqualsToken() {
    if (!m_cursor) return false;
    m_cursor = skipBlanks(m_cursor, nullptr);
    if (*m_cursor != '=') return false;
    ++m_cursor;
    return true;
}

char* Parser::GetString() {
    if (!m_cursor) return s_empty;
    m_cursor = skipBlanks(m_cursor, nullptr);
    if (*m_cursor == '"') return takeQuoted(m_cursor);
    char* start = m_cursor;
    m_cursor += std::strlen(m_cursor);
    char* end = m_cursor;
    while (end > start && isBlank(end[-1], nullptr))
        --end;
    *end = '\0';
    return start;
}
