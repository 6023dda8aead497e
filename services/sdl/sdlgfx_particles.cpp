// SdlGfx particles: each particle of an instance drawn as its sprite (the instances are ParticleGfx's).
#include "sdlgfx.h"

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
