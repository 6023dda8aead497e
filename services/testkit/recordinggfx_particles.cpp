// The recording graphics service: particle system instances.
#include "recordinggfx.h"

namespace testkit {

void RecordingGfx::failParticles(const std::string& file) {
    std::lock_guard<std::mutex> guard(m_lock);
    m_failParticles.insert(file);
}

void RecordingGfx::setParticleDead(int instance, bool dead) {
    std::lock_guard<std::mutex> guard(m_lock);
    if (instance >= 0 && instance < static_cast<int>(m_particles.size())) m_particles[instance].dead = dead;
}

std::string RecordingGfx::particleOwner(int instance) const {
    std::lock_guard<std::mutex> guard(m_lock);
    return instance >= 0 && instance < static_cast<int>(m_particles.size()) ? m_particles[instance].owner
                                                                            : "";
}

int RecordingGfx::liveParticleSystems() const {
    std::lock_guard<std::mutex> guard(m_lock);
    int live = 0;
    for (const Particles& p : m_particles)
        live += p.live;
    return live;
}

int RecordingGfx::createParticleSystemInstance(const char* owner, const char* file) {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string f = file ? file : "";
    record("createParticleSystemInstance", {}, {}, f);
    if (!file || m_failParticles.count(f)) return -1;
    m_particles.push_back(Particles{owner ? owner : "", f});
    return static_cast<int>(m_particles.size()) - 1;
}

void RecordingGfx::releaseParticleSystemInstance(const char* owner) {
    std::lock_guard<std::mutex> guard(m_lock);
    std::string o = owner ? owner : "";
    record("releaseParticleSystemInstance", {}, {}, o);
    for (Particles& p : m_particles)
        if (p.owner == o) p.live = false;
}

void RecordingGfx::releaseParticleSystemInstance(int instance) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("releaseParticleSystemInstance", {instance});
    if (instance >= 0 && instance < static_cast<int>(m_particles.size())) m_particles[instance].live = false;
}

void RecordingGfx::updateParticleSystem(int instance, int x, int y, float seconds) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("updateParticleSystem", {instance, x, y}, {seconds});
}

void RecordingGfx::psemit(int depth, int instance, float alpha) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("psemit", {depth, instance}, {alpha});
}

// Unknown and released instances count as dead, as a real service would no longer know them.
bool RecordingGfx::particleSystemInstanceIsDead(int instance) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("particleSystemInstanceIsDead", {instance});
    if (instance < 0 || instance >= static_cast<int>(m_particles.size())) return true;
    const Particles& p = m_particles[instance];
    return p.dead || !p.live;
}

void RecordingGfx::particleSystemInstanceStopEmitters(int instance) {
    std::lock_guard<std::mutex> guard(m_lock);
    record("particleSystemInstanceStopEmitters", {instance});
}

} // namespace testkit
