// The test kit: recording and scriptable doubles of every service the library calls, and Services,
// which installs them all for a scope.
#pragma once
#include "callbacklog.h"
#include "countingmemorymgr.h"
#include "logcapture.h"
#include "memoryfiles.h"
#include "probewidget.h"
#include "recordinggfx.h"
#include "recordingplatform.h"
#include "recordingsound.h"
#include "services.h"
#include "stage.h"
