#include "starfield.h"
#include <algorithm>
#include <cmath>
#include "gfxsubsystem.h"
#include "uisubsystem.h"

UI_DEFINE_WIDGET(StarField, uiNonVisualWidget, "starfield.cpp")

namespace {
constexpr float kBasketSpeed = 520; // pixels a second
constexpr int kBasketHalf = 48, kSize = 32;
const char* const kSprites[] = {"art/star", "art/rock", "art/basket"};
} // namespace

StarField::~StarField() {
    if (!g_gfx || m_starSprite < 0) return;
    for (const char* sprite : kSprites)
        g_gfx->releaseSprite(sprite);
}

void StarField::start(const Round& round) {
    if (g_gfx && m_starSprite < 0) {
        m_starSprite = g_gfx->createSprite(kSprites[0]);
        m_rockSprite = g_gfx->createSprite(kSprites[1]);
        m_basketSprite = g_gfx->createSprite(kSprites[2]);
    }
    m_round = round;
    m_random.seed(round.seed);
    for (Faller& f : m_fallers)
        f.live = false;
    m_basket = 400;
    m_lastMouse = g_ui ? g_ui->getMousePositionX() : -1;
    m_score = m_spawned = m_catches = 0;
    m_lives = 3;
    m_elapsed = m_nextSpawn = 0;
    m_length = 20000 + 2000 * static_cast<unsigned int>(round.level);
    m_over = false;
}

float StarField::timeLeft() const {
    return 1.0f - std::min(1.0f, static_cast<float>(m_elapsed) / m_length);
}

int StarField::stars() const {
    const int share = m_spawned ? 100 * m_catches / m_spawned : 0;
    return share >= 90 ? 3 : share >= 70 ? 2 : share >= 45 ? 1 : 0;
}

void StarField::_spawn() {
    Faller* free = std::find_if(m_fallers, m_fallers + kFallers, [](const Faller& f) { return !f.live; });
    if (free == m_fallers + kFallers) return;
    std::uniform_real_distribution<float> x(40, 760), chance(0, 1);
    const float level = static_cast<float>(m_round.level), hard = static_cast<float>(m_round.difficulty);
    const bool rock = chance(m_random) < 0.18f + 0.03f * level;
    *free = Faller{x(m_random), -kSize, 150 + 18 * level + 45 * hard + 60 * chance(m_random), rock, true};
    if (!rock) ++m_spawned;
    const unsigned int gap = 760 - 40 * static_cast<unsigned int>(m_round.level + 2 * m_round.difficulty);
    m_nextSpawn = m_elapsed + gap / 2 + m_random() % gap;
}

// Where the basket heads: the automatic player's pick, the keys or stick, or the pointer.
float StarField::_target() const {
    if (m_round.autoplay) {
        // The lowest star the basket can still reach before it lands.
        const Faller* best = nullptr;
        for (const Faller& f : m_fallers) {
            const float fall = (kBasketY - f.y) / f.speed, reach = std::fabs(f.x - m_basket) / kBasketSpeed;
            if (f.live && !f.rock && fall > 0 && reach <= fall + 0.1f && (!best || f.y > best->y)) best = &f;
        }
        return best ? best->x : m_basket;
    }
    if (m_steer) return m_basket + m_steer * 200.0f;
    return m_lastMouse >= 0 ? static_cast<float>(m_lastMouse) : m_basket;
}

void StarField::_fall(float seconds) {
    for (Faller& f : m_fallers) {
        if (!f.live) continue;
        const float before = f.y;
        f.y += f.speed * seconds;
        const bool atRim = before + kSize < kBasketY + 8 && f.y + kSize >= kBasketY + 8;
        if (atRim && std::fabs(f.x - m_basket) < kBasketHalf) {
            f.live = false;
            if (f.rock) {
                _playWithPan("art/bump", WP_POS, 1.0f, static_cast<int>(f.x));
                m_over = --m_lives == 0;
            } else {
                _playWithPan("art/catch", WP_POS, 1.0f, static_cast<int>(f.x));
                m_score += 10 * (m_round.level + 1) * (m_round.difficulty + 1);
                ++m_catches;
            }
        }
        if (f.y > 600) f.live = false;
    }
}

void StarField::_update(int, int) {
    if (m_over) return;
    const unsigned int ms = std::min(s_iDeltaTime, 100u);
    m_elapsed += ms;
    if (m_elapsed >= m_length) m_over = true;
    if (m_elapsed >= m_nextSpawn) _spawn();
    const int mouse = g_ui ? g_ui->getMousePositionX() : -1;
    if (mouse != m_lastMouse && !m_steer && g_ui && g_ui->getMousePositionY() >= 0) m_lastMouse = mouse;
    const float seconds = ms / 1000.0f, step = kBasketSpeed * seconds;
    m_basket += std::max(-step, std::min(step, _target() - m_basket));
    m_basket = std::max<float>(kBasketHalf, std::min<float>(800 - kBasketHalf, m_basket));
    _fall(seconds);
}

void StarField::_render(int x, int y) {
    if (!g_gfx || m_starSprite < 0) return;
    x += rect.x;
    y += rect.y;
    const int d = static_cast<int>(depth);
    for (const Faller& f : m_fallers)
        if (f.live)
            g_gfx->blt(d, f.rock ? m_rockSprite : m_starSprite, x + static_cast<int>(f.x) - kSize / 2,
                       y + static_cast<int>(f.y), 0, 0, 255);
    g_gfx->blt(d, m_basketSprite, x + static_cast<int>(m_basket) - kBasketHalf, y + kBasketY, 0, 0, 255);
}
