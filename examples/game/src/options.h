// The options dialog, in the menu's tree and in the play screen's: volumes, fullscreen, difficulty and
// language take effect as they change and are saved when the dialog closes.
#pragma once

class Game;
class uiWidget;

class OptionsDialog {
public:
    explicit OptionsDialog(Game& game) : m_game(game) {}
    void bind(uiWidget* dialog); // once for each tree holding the dialog
    // Sets the controls from the settings and pushes the dialog.
    void open(uiWidget* dialog, bool animated = true);
    void frame(); // applies what the player changed
    bool isOpen() const { return m_dialog != nullptr; }
    uiWidget* dialog() const { return m_dialog; }
    void forget() { m_dialog = nullptr; }                // its tree is gone
    void follow(uiWidget* dialog) { m_dialog = dialog; } // its tree was rebuilt: the same dialog there

private:
    void _close();
    int _value(const char* path, const char* type);

    Game& m_game;
    uiWidget* m_dialog = nullptr;
};
