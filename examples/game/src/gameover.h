// The end of a round: the results dialog, then for a new high score the name entry, then the table.
#pragma once

class Game;
class uiWidget;

class GameOver {
public:
    explicit GameOver(Game& game) : m_game(game) {}
    void bind(uiWidget* root);
    void open(int score, int stars, bool outOfLives);
    void frame(); // waits for the name to be accepted

private:
    void _continue();
    void _accept();

    Game& m_game;
    uiWidget* m_root = nullptr;
    int m_score = 0;
    bool m_naming = false, m_settled = false;
};
