// The states of dialogs and animated widgets, as getState() reports them. A plain dialog knows hidden and
// idle; an animated dialog enters through UIS_ENTERING and exits through UIS_EXITING to UIS_EXITED, which
// the dialog stack waits for; an animated widget's exit ends in UIS_HIDDEN instead.
#pragma once

enum e_uiState : int {
    UIS_HIDDEN = 0,
    UIS_IDLE = 1,
    UIS_ENTERING = 2,
    UIS_EXITING = 3,
    UIS_EXITED = 4,
};
