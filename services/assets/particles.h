// The particle engine behind the graphics services (SDL and browser). An effect file describes one emitter;
// an instance runs it at a position. Each instance has its own seeded random sequence, so a replayed session
// draws the same particles.
#pragma once
#include <cstdint>
#include <string>
#include <vector>
#include "descriptors.h"

namespace assets {

struct ParticleEffect {
    std::string sprite;     // sprite name drawn for each particle
    float rate = 0.0f;      // particles per second while the emitter runs
    int burst = 0;          // particles emitted at once when the instance starts or restarts
    float duration = -1.0f; // seconds the emitter runs; < 0: until stopped
    float lifeMin = 1.0f, lifeMax = 1.0f;
    float speedMin = 0.0f, speedMax = 0.0f; // pixels per second
    float angle = 270.0f, spread = 360.0f;  // degrees (0 = right, 90 = down); spread is the whole cone
    float gravityX = 0.0f, gravityY = 0.0f; // pixels per second squared
    float sizeStart = 1.0f, sizeEnd = 1.0f; // scale of the sprite over the particle's life
    float alphaStart = 1.0f, alphaEnd = 0.0f;
};

// Reads an effect file; false when it cannot be opened.
bool loadParticleEffect(const std::string& path, ParticleEffect& effect);

struct Particle {
    float x, y, vx, vy, age, life;
};

class ParticleInstance {
public:
    ParticleInstance(std::string owner, const ParticleEffect& effect, uint32_t seed);
    // Seeds by instance id: a replayed session creates the same instances in the same order.
    static uint32_t seedFor(int id) { return 0x9E3779B9u * static_cast<uint32_t>(id + 1); }
    const std::string& owner() const { return m_owner; }
    const ParticleEffect& effect() const { return m_effect; }
    const std::vector<Particle>& particles() const { return m_particles; }

    void restart(); // the burst again and the emitter running from its start
    void stopEmitters() { m_emitting = false; }
    void update(float x, float y, float seconds);
    bool dead() const { return !m_emitting && !m_burstPending && m_particles.empty(); }
    // Where particle p stands in its life: 0 at birth, 1 at death.
    static float lifeFraction(const Particle& p) { return p.life > 0.0f ? p.age / p.life : 1.0f; }
    // Where particle p is drawn with a frame of w x h pixels, centred on it and scaled by its age, and
    // its alpha (0 to 255) under the instance's alpha.
    Rect placement(const Particle& p, int w, int h, float alpha, int& particleAlpha) const;

private:
    void _spawn(float x, float y);
    float _random(float lo, float hi);

    std::string m_owner;
    ParticleEffect m_effect;
    std::vector<Particle> m_particles;
    uint32_t m_rng;
    bool m_emitting = true;
    bool m_burstPending = true;
    float m_elapsed = 0.0f;
    float m_carry = 0.0f; // fraction of a particle owed by the rate
};

} // namespace assets
