#include "gameover.h"
#include <string>
#include "game.h"
#include "scores.h"
#include "uidialog.h"
#include "uientrywidget.h"
#include "uisprite.h"
#include "uisubsystem.h"
#include "uitextwidget.h"

void GameOver::bind(uiWidget* root) {
    m_root = root;
    m_naming = false;
    m_game.onClick(m_game.find(root, "play.results.next"), [this] { _continue(); });
    m_game.onClick(m_game.find(root, "play.name.ok"), [this] { _accept(); });
    m_game.onClick(m_game.find(root, "play.scores.ok"), [this] { m_game.show(SCREEN_MENU); });
}

void GameOver::open(int score, int stars, bool outOfLives) {
    m_score = score;
    if (auto* title = m_game.find<uiTextWidget>(m_root, "play.results.title", "uiTextWidget"))
        title->print(0, outOfLives ? "results.nolives" : "results.timeup");
    if (auto* text = m_game.find<uiTextWidget>(m_root, "play.results.score", "uiTextWidget"))
        text->print(0, "results.score", score);
    if (auto* rating = m_game.find<uiSprite>(m_root, "play.results.stars", "uiSprite"))
        rating->setFrame(stars);
    m_game.push(m_game.find(m_root, "play.results"));
}

void GameOver::_continue() {
    m_game.pop();
    if (m_game.scores.rankOf(m_score) < 0) return showScores(m_game, m_root, "play.scores", -1);
    if (auto* entry = m_game.find<uiEntryWidget>(m_root, "play.name.entry", "uiEntryWidget")) entry->reset();
    m_game.push(m_game.find(m_root, "play.name"));
    m_naming = true;
    m_settled = false;
}

// Once the name dialog is idle its tab focus goes to the field alone (showing focused all its widgets);
// Enter in the field accepts the name as the OK button does.
void GameOver::frame() {
    if (!m_naming) return;
    uiDialog* top = g_ui->topDialog();
    if (!m_settled && top && top == m_game.find(m_root, "play.name") && g_ui->topDialogIsIdle(top)) {
        top->reset();
        m_settled = true;
    }
    auto* entry = m_game.find<uiEntryWidget>(m_root, "play.name.entry", "uiEntryWidget");
    if (entry && entry->isAccepted()) _accept();
}

void GameOver::_accept() {
    if (!m_naming) return;
    m_naming = false;
    std::string name;
    if (auto* entry = m_game.find<uiEntryWidget>(m_root, "play.name.entry", "uiEntryWidget"))
        for (int i = 0; i < entry->length; ++i)
            name += entry->text[i] < 128 ? static_cast<char>(entry->text[i]) : '?';
    const int rank = m_game.scores.rankOf(m_score);
    m_game.scores.insert(name, m_score);
    m_game.scores.save(m_game.config.prefs);
    m_game.pop();
    showScores(m_game, m_root, "play.scores", rank);
}
