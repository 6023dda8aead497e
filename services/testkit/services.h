// All test doubles at once: constructing a Services installs one of each (graphics, sound, memory, log
// sink, file and platform backends; the string table is left alone), destroying it puts the previous
// ones back.
//
// Construct it before anything the test allocates from the library and let it outlive all of that:
// blocks from the counting memory manager must be freed while it is installed. (A block it never handed
// out is passed on to the previously installed manager and counted as a stray free.)
#pragma once
#include "countingmemorymgr.h"
#include "logcapture.h"
#include "memoryfiles.h"
#include "recordinggfx.h"
#include "recordingplatform.h"
#include "recordingsound.h"

namespace testkit {

class Services {
public:
    Services();
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    // The services, installed in the library's globals for the object's life.
    RecordingGfx gfx;
    RecordingSound sound;
    MemoryFiles files;
    LogCapture log;
    CountingMemoryMgr memory;
    RecordingPlatform platform;

private:
    gfxSubsystem* m_prevGfx;
    soundSubsystem* m_prevSound;
    MemoryMgr* m_prevMemory;
    Logger::Sink* m_prevSink;
    File::Backend* m_prevFiles;
    Platform::Backend* m_prevPlatform;
};

} // namespace testkit
