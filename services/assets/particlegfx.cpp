#include "particlegfx.h"
#include <vector>
#include "assetfiles.h"
#include "logger.h"

namespace assets {

int ParticleGfx::createParticleSystemInstance(const char* owner, const char* file) {
    if (!file || !*file) return -1;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    ParticleEffect effect;
    if (!loadParticleEffect(joinPath(m_assetDir, file), effect)) {
        Logger::log(Logger::kWarning, "%s: could not load particle system: \"%s\"\f", m_service, file);
        return -1;
    }
    const int id = m_nextPsys++;
    Psys& psys = m_psys[id];
    psys.instance =
        std::make_unique<ParticleInstance>(owner ? owner : "", effect, ParticleInstance::seedFor(id));
    psys.sprite = createSprite(effect.sprite.c_str());
    return id;
}

ParticleGfx::Psys* ParticleGfx::_psys(int instance) {
    auto it = m_psys.find(instance);
    return it == m_psys.end() ? nullptr : &it->second;
}

int ParticleGfx::_particleCount() const {
    int particles = 0;
    for (const auto& entry : m_psys)
        particles += static_cast<int>(entry.second.instance->particles().size());
    return particles;
}

void ParticleGfx::releaseParticleSystemInstance(const char* owner) {
    if (!owner) return;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    std::vector<int> ids;
    for (const auto& entry : m_psys)
        if (entry.second.instance->owner() == owner) ids.push_back(entry.first);
    for (int id : ids)
        releaseParticleSystemInstance(id);
}

void ParticleGfx::releaseParticleSystemInstance(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    if (!psys) return;
    if (const char* sprite = getSpriteName(psys->sprite)) releaseSprite(std::string(sprite).c_str());
    m_psys.erase(instance);
}

void ParticleGfx::updateParticleSystem(int instance, int x, int y, float seconds) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(instance))
        psys->instance->update(static_cast<float>(x), static_cast<float>(y), seconds);
}

bool ParticleGfx::particleSystemInstanceIsDead(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    return !psys || psys->instance->dead();
}

void ParticleGfx::particleSystemInstanceStopEmitters(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(instance)) psys->instance->stopEmitters();
}

void ParticleGfx::addEvent(int event, int a, int b, int c, float f, void* p) {
    // The one event the library posts: restart the instance b. It takes effect at once.
    if (event != kParticleRestartEvent) return;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(b)) psys->instance->restart();
}

} // namespace assets
