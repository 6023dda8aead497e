// The play field: stars and rocks fall, the basket catches them. A widget type of the game's own, so a
// paused game container above it stops the round: the library then no longer updates it.
#pragma once
#include <random>
#include "uinonvisualwidget.h"

class StarField : public uiNonVisualWidget {
    UI_DECLARE_WIDGET(StarField)

public:
    struct Round {
        int level;      // 0..7
        int difficulty; // 0..2
        unsigned int seed;
        bool autoplay;
    };
    ~StarField() override;
    void start(const Round& round);
    void steer(int direction) { m_steer = direction; }

    int score() const { return m_score; }
    int lives() const { return m_lives; }
    float timeLeft() const; // 1 at the start, 0 at the end
    bool over() const { return m_over; }
    int stars() const; // 0..3 earned by the share of stars caught
    int catches() const { return m_catches; }
    int basketX() const { return static_cast<int>(m_basket); }

    static constexpr int kBasketY = 540;

protected:
    void _update(int x, int y) override;
    void _render(int x, int y) override;

private:
    struct Faller {
        float x, y, speed;
        bool rock, live;
    };
    void _spawn();
    float _target() const;
    void _fall(float seconds);

    static constexpr int kFallers = 24;
    Faller m_fallers[kFallers] = {};
    std::mt19937 m_random;
    Round m_round{};
    int m_starSprite = -1, m_rockSprite = -1, m_basketSprite = -1;
    float m_basket = 400;
    int m_lastMouse = -1;
    int m_steer = 0;
    int m_score = 0, m_lives = 3, m_spawned = 0, m_catches = 0;
    unsigned int m_elapsed = 0, m_length = 1, m_nextSpawn = 0;
    bool m_over = true;
};
