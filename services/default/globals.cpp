// The service globals the game sets, and the out-of-line destructors that anchor the interfaces' vtables.
#include "gfxsubsystem.h"
#include "soundsubsystem.h"
#include "stringtable.h"

gfxSubsystem* g_gfx = nullptr;
soundSubsystem* g_sound = nullptr;
StringTable* g_stringTblPtr = nullptr;

gfxSubsystem::~gfxSubsystem() = default;
soundHandle::~soundHandle() = default;
soundSubsystem::~soundSubsystem() = default;
StringTable::~StringTable() = default;
