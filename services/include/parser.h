// The line tokenizer that UI descriptions and scriptlets are read with.
//
// Lines end at LF, CRLF or CR; blanks are spaces and tabs. A token that starts with a double quote runs
// to the closing quote and comes back without the quotes. Keys of ParamEquals* compare without regard to
// case; a matching key whose "=" or value is missing or malformed logs one error naming the key and the
// line number and leaves the value unchanged. Line numbers count from 1.
#pragma once
#include "uiapi.h"

class UI_API Parser {
public:
    explicit Parser(char* text); // the parser writes into the text
    virtual ~Parser();
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    bool ParseLine();                       // next line; false at the end of the text
    char* GetToken(const char* delimiters); // next token of the current line, null at its end
    bool GetEqualsToken();                  // true (and consumed) when the next token is "="
    char* GetString();                      // quoted content, or the rest of the line trimmed; never null
    // The number of the current line.
    int GetLineNumber() const { return m_lineNumber; }

    // Key readers for a widget's _parseParams: true when `key` is `name`, reading "= value" (two values
    // for the _2 forms) of the current line into the pointed-to variables.
    bool ParamEqualsInt32(const char* key, const char* name, int* value);
    bool ParamEqualsUInt32(const char* key, const char* name, unsigned int* value);
    bool ParamEqualsFloat32(const char* key, const char* name, float* value);
    bool ParamEqualsBoolean(const char* key, const char* name, bool* value);
    bool ParamEqualsInt32_2(const char* key, const char* name, int* a, int* b);
    bool ParamEqualsFloat32_2(const char* key, const char* name, float* a, float* b);

private:
    char* m_next = nullptr;   // start of the next line
    char* m_cursor = nullptr; // read position in the current line
    int m_lineNumber = 0;
};
