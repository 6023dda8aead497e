// Translation of text keys into UTF-8 texts. g_stringTblPtr may be null: texts are then used as given.
#pragma once
#include "uiapi.h"

// The interface a game implements (or FileStringTable) to translate the texts of descriptions.
class UI_API StringTable {
public:
    virtual ~StringTable();
    virtual const unsigned char* translate(const char* key) = 0; // the UTF-8 text for `key`
};

extern UI_API StringTable* g_stringTblPtr; // starts null
