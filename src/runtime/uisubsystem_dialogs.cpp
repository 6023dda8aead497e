// Placeholder until the dialog stack lands.
#include "uisubsystem.h"

void uiSubsystem::pushDialog(uiDialog*, bool) {}
void uiSubsystem::popDialog(uiDialog*, bool) {}
void uiSubsystem::clearDialogStack(bool) {}
void uiSubsystem::clearPendingDialogs() {}
uiDialog* uiSubsystem::topDialog() { return nullptr; }
bool uiSubsystem::topDialogIsIdle(uiDialog*) { return false; }
bool uiSubsystem::isDialogPushed(uiDialog*) { return false; }
void uiSubsystem::reportDialogStack() {}
void uiSubsystem::_removeDialogStackCmd() {}
void uiSubsystem::_updateDialogs() {}
