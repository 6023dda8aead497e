// WebGfx particles: each particle of an instance drawn as its sprite (the instances are ParticleGfx's).
#include "webgfx.h"

void WebGfx::psemit(int depth, int instance, float alpha) {
    std::lock_guard<std::recursive_mutex> hold(m_lock);
    Psys* psys = _psys(instance);
    Sheet* sheet = psys ? _sheet(psys->sprite) : nullptr;
    if (!sheet) return;
    const assets::Rect src = assets::frameRect(sheet->layout, 0, 0);
    for (const assets::Particle& p : psys->instance->particles()) {
        int a = 0;
        const assets::Rect dst = psys->instance->placement(p, src.w, src.h, alpha, a);
        _queue(depth, 0, sheet->image, src, dst, a);
    }
}
