// The test kit: recording and scriptable doubles of every service the library calls, Services, which
// installs them all for a scope, recorders of what widgets do, and TempDir, a folder of real files.
#pragma once
#include "callbacklog.h"
#include "countingmemorymgr.h"
#include "focus.h"
#include "logcapture.h"
#include "memoryfiles.h"
#include "probewidget.h"
#include "recordinggfx.h"
#include "recordingplatform.h"
#include "recordingsound.h"
#include "services.h"
#include "stage.h"
#include "tempdir.h"
