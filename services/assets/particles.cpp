#include "particles.h"
#include <algorithm>
#include <cmath>
#include "assetfiles.h"

namespace assets {

namespace {

void readRange(const DescriptorLine& line, float& lo, float& hi) {
    lo = numberAt(line, 0, lo);
    hi = numberAt(line, 1, lo);
}

} // namespace

bool loadParticleEffect(const std::string& path, ParticleEffect& e) {
    std::vector<DescriptorLine> lines;
    if (!readDescriptor(path, lines)) return false;
    for (const DescriptorLine& line : lines) {
        const std::string& key = line[0];
        if (key == "sprite" && line.size() > 1)
            e.sprite = line[1];
        else if (key == "rate")
            e.rate = numberAt(line, 0, e.rate);
        else if (key == "burst")
            e.burst = static_cast<int>(numberAt(line, 0, static_cast<float>(e.burst)));
        else if (key == "duration")
            e.duration = numberAt(line, 0, e.duration);
        else if (key == "lifetime")
            readRange(line, e.lifeMin, e.lifeMax);
        else if (key == "speed")
            readRange(line, e.speedMin, e.speedMax);
        else if (key == "angle")
            readRange(line, e.angle, e.spread);
        else if (key == "gravity")
            readRange(line, e.gravityX, e.gravityY);
        else if (key == "size")
            readRange(line, e.sizeStart, e.sizeEnd);
        else if (key == "alpha")
            readRange(line, e.alphaStart, e.alphaEnd);
    }
    return true;
}

ParticleInstance::ParticleInstance(std::string owner, const ParticleEffect& effect, uint32_t seed)
    : m_owner(std::move(owner)), m_effect(effect), m_rng(seed ? seed : 1u) {}

Rect ParticleInstance::placement(const Particle& p, int w, int h, float alpha, int& particleAlpha) const {
    const ParticleEffect& e = m_effect;
    const float t = lifeFraction(p);
    const float scale = e.sizeStart + (e.sizeEnd - e.sizeStart) * t;
    particleAlpha = static_cast<int>((e.alphaStart + (e.alphaEnd - e.alphaStart) * t) * alpha * 255.0f);
    const int sw = std::max(1, static_cast<int>(static_cast<float>(w) * scale));
    const int sh = std::max(1, static_cast<int>(static_cast<float>(h) * scale));
    return Rect{static_cast<int>(p.x) - sw / 2, static_cast<int>(p.y) - sh / 2, sw, sh};
}

void ParticleInstance::restart() {
    m_emitting = true;
    m_burstPending = true;
    m_elapsed = 0.0f;
    m_carry = 0.0f;
}

float ParticleInstance::_random(float lo, float hi) {
    // xorshift32: small, fast and the same on every platform
    m_rng ^= m_rng << 13;
    m_rng ^= m_rng >> 17;
    m_rng ^= m_rng << 5;
    return lo + (hi - lo) * static_cast<float>(m_rng & 0xFFFFFF) / static_cast<float>(0x1000000);
}

void ParticleInstance::_spawn(float x, float y) {
    const float half = m_effect.spread * 0.5f;
    const float degrees = _random(m_effect.angle - half, m_effect.angle + half);
    const float speed = _random(m_effect.speedMin, m_effect.speedMax);
    const float radians = degrees * 3.14159265f / 180.0f;
    m_particles.push_back(Particle{x, y, std::cos(radians) * speed, std::sin(radians) * speed, 0.0f,
                                   _random(m_effect.lifeMin, m_effect.lifeMax)});
}

void ParticleInstance::update(float x, float y, float seconds) {
    if (seconds < 0.0f) seconds = 0.0f;
    for (Particle& p : m_particles) {
        p.age += seconds;
        p.vx += m_effect.gravityX * seconds;
        p.vy += m_effect.gravityY * seconds;
        p.x += p.vx * seconds;
        p.y += p.vy * seconds;
    }
    std::vector<Particle> alive;
    alive.reserve(m_particles.size());
    for (const Particle& p : m_particles)
        if (p.age < p.life) alive.push_back(p);
    m_particles.swap(alive);

    if (m_burstPending) {
        m_burstPending = false;
        for (int i = 0; i < m_effect.burst; ++i)
            _spawn(x, y);
    }
    if (!m_emitting) return;
    m_elapsed += seconds;
    m_carry += m_effect.rate * seconds;
    for (; m_carry >= 1.0f; m_carry -= 1.0f)
        _spawn(x, y);
    if (m_effect.duration >= 0.0f && m_elapsed >= m_effect.duration) m_emitting = false;
}

} // namespace assets
