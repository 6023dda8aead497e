// SdlGfx particle systems: instances of effect files, keyed by id and by owner.
#include <algorithm>
#include "logger.h"
#include "assetfiles.h"
#include "sdlgfx.h"
#include "particles.h"

int SdlGfx::createParticleSystemInstance(const char* owner, const char* file) {
    if (!file || !*file) return -1;
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    assets::ParticleEffect effect;
    if (!assets::loadParticleEffect(assets::joinPath(m_assetDir, file), effect)) {
        Logger::log(1, "SdlGfx: could not load particle system: \"%s\"\f", file);
        return -1;
    }
    const int id = m_nextPsys++;
    Psys& psys = m_psys[id];
    psys.instance = std::make_unique<assets::ParticleInstance>(owner ? owner : "", effect,
                                                               assets::ParticleInstance::seedFor(id));
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
    if (!sheet) return;
    const assets::Rect f = assets::frameRect(sheet->layout, 0, 0);
    const SDL_Rect src{f.x, f.y, f.w, f.h};
    for (const assets::Particle& p : psys->instance->particles()) {
        int a = 0;
        const assets::Rect d = psys->instance->placement(p, f.w, f.h, alpha, a);
        _queue(depth, 0, sheet->image, src, SDL_Rect{d.x, d.y, d.w, d.h}, a);
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
