#include "services.h"

namespace testkit {

Services::Services()
    : m_prevGfx(g_gfx), m_prevSound(g_sound), m_prevMemory(g_MemoryPtr), m_prevSink(Logger::sink()),
      m_prevFiles(File::backend()), m_prevPlatform(Platform::backend()) {
    memory.setFallback(m_prevMemory);
    g_gfx = &gfx;
    g_sound = &sound;
    g_MemoryPtr = &memory;
    Logger::setSink(&log);
    File::setBackend(&files);
    Platform::setBackend(&platform);
}

Services::~Services() {
    g_gfx = m_prevGfx;
    g_sound = m_prevSound;
    g_MemoryPtr = m_prevMemory;
    Logger::setSink(m_prevSink);
    File::setBackend(m_prevFiles);
    Platform::setBackend(m_prevPlatform);
}

} // namespace testkit
