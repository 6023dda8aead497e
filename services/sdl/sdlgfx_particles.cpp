// SdlGfx particle systems: instances of effect files, keyed by id and by owner.
#include <algorithm>
#include "logger.h"
#include "sdlassets.h"
#include "sdlgfx.h"
#include "sdlparticles.h"

int SdlGfx::createParticleSystemInstance(const char* owner, const char* file) {
    if (!file || !*file) return -1;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    sdlsvc::ParticleEffect effect;
    if (!sdlsvc::loadParticleEffect(sdlsvc::joinPath(m_assetDir, file), effect)) {
        Logger::log(1, "SdlGfx: could not load particle system: \"%s\"\f", file);
        return -1;
    }
    const int id = m_nextPsys++;
    Psys& psys = m_psys[id];
    // Seeded by the id: a replayed session creates the same instances in the same order.
    psys.instance = std::make_unique<sdlsvc::ParticleInstance>(owner ? owner : "", effect,
                                                               0x9E3779B9u * static_cast<uint32_t>(id + 1));
    psys.sprite = createSprite(effect.sprite.c_str());
    return id;
}

SdlGfx::Psys* SdlGfx::_psys(int instance) {
    auto it = m_psys.find(instance);
    return it == m_psys.end() ? nullptr : &it->second;
}

void SdlGfx::releaseParticleSystemInstance(const char* owner) {
    if (!owner) return;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    std::vector<int> ids;
    for (const auto& entry : m_psys)
        if (entry.second.instance->owner() == owner) ids.push_back(entry.first);
    for (int id : ids)
        releaseParticleSystemInstance(id);
}

void SdlGfx::releaseParticleSystemInstance(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    if (!psys) return;
    if (const Sheet* sheet = _sheet(psys->sprite)) releaseSprite(std::string(sheet->name).c_str());
    m_psys.erase(instance);
}

void SdlGfx::updateParticleSystem(int instance, int x, int y, float seconds) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(instance))
        psys->instance->update(static_cast<float>(x), static_cast<float>(y), seconds);
}

void SdlGfx::psemit(int depth, int instance, float alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    Sheet* sheet = psys ? _sheet(psys->sprite) : nullptr;
    SDL_Rect src;
    if (!sheet || !_frameRect(*sheet, 0, 0, src)) return;
    const sdlsvc::ParticleEffect& e = psys->instance->effect();
    for (const sdlsvc::Particle& p : psys->instance->particles()) {
        const float t = sdlsvc::ParticleInstance::lifeFraction(p);
        const float scale = e.sizeStart + (e.sizeEnd - e.sizeStart) * t;
        const float a = (e.alphaStart + (e.alphaEnd - e.alphaStart) * t) * alpha * 255.0f;
        const int w = std::max(1, static_cast<int>(static_cast<float>(src.w) * scale));
        const int h = std::max(1, static_cast<int>(static_cast<float>(src.h) * scale));
        const SDL_Rect dst{static_cast<int>(p.x) - w / 2, static_cast<int>(p.y) - h / 2, w, h};
        _queue(depth, 0, sheet->image, src, dst, static_cast<int>(a));
    }
}

bool SdlGfx::particleSystemInstanceIsDead(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    return !psys || psys->instance->dead();
}

void SdlGfx::particleSystemInstanceStopEmitters(int instance) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(instance)) psys->instance->stopEmitters();
}

void SdlGfx::addEvent(int event, int a, int b, int c, float f, void* p) {
    // The one event the library posts: restart the instance b. It takes effect at once.
    if (event != kParticleRestartEvent) return;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    if (Psys* psys = _psys(b)) psys->instance->restart();
}
