// Input focus as a game's tests look at it: which widgets hold it as the player tabs through a dialog,
// and what the subsystem's input-focus stack holds.
#pragma once
#include <string>
#include <vector>
#include "uisubsystem.h"
#include "uikeys.h"
#include "uiwidget.h"

namespace testkit {

// The names of `widgets` that hold input focus, now and after each of `tabs` tab keys sent to `dialog`;
// "(tab not taken)" where the dialog left a tab unhandled.
std::string tabOrder(uiWidget* dialog, const std::vector<uiWidget*>& widgets, int tabs);

// Pops the entries of `ui`'s input-focus stack above `bottom` (at most 64) and returns them, top first.
std::vector<uiWidget*> popFocusStack(uiSubsystem& ui, const uiWidget* bottom);

} // namespace testkit
