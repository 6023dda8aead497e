#include "options.h"
#include <cmath>
#include "game.h"
#include "host.h"
#include "uiradiogroup.h"
#include "uisliderbutton.h"
#include "uisubsystem.h"
#include "uitogglebutton.h"

namespace {
const char* const kMusic = "options.music";
const char* const kEffects = "options.effects";
const char* const kFullscreen = "options.fullscreen";
const char* const kDifficulty = "options.difficulty";
const char* const kLanguage = "options.language";
} // namespace

void OptionsDialog::open(uiWidget* dialog, bool animated) {
    if (!dialog) return;
    Settings& s = m_game.settings;
    if (auto* music = m_game.find<uiSliderButton>(dialog, kMusic, "uiSliderButton"))
        music->setValue(s.music / 100.0f);
    if (auto* fx = m_game.find<uiSliderButton>(dialog, kEffects, "uiSliderButton"))
        fx->setValue(s.effects / 100.0f);
    if (auto* full = m_game.find<uiToggleButton>(dialog, kFullscreen, "uiToggleButton"))
        full->setToggle(s.fullscreen);
    if (auto* group = m_game.find<uiRadioGroup>(dialog, kDifficulty, "uiRadioGroup"))
        group->setValue(s.difficulty);
    if (auto* group = m_game.find<uiRadioGroup>(dialog, kLanguage, "uiRadioGroup"))
        group->setValue(s.language);
    m_dialog = dialog;
    m_game.push(dialog, animated);
}

void OptionsDialog::bind(uiWidget* dialog) {
    m_game.onClick(m_game.find(dialog, "options.back"), [this] { _close(); });
    m_game.onClick(m_game.find(dialog, kFullscreen), [] {}); // a toggle flips when its click is taken
}

void OptionsDialog::_close() {
    m_game.settings.save(m_game.config.prefs);
    m_dialog = nullptr;
    m_game.pop();
}

int OptionsDialog::_value(const char* path, const char* type) {
    uiWidget* w = m_dialog->getWidget(path, 0, false);
    if (!w || !w->isType(type)) return -1;
    if (w->isType("uiSliderButton"))
        return static_cast<int>(std::lround(static_cast<uiSliderButton*>(w)->getValue() * 100));
    if (w->isType("uiToggleButton")) return static_cast<uiToggleButton*>(w)->getToggle() ? 1 : 0;
    return static_cast<uiRadioGroup*>(w)->getValue();
}

void OptionsDialog::frame() {
    if (!m_dialog) return;
    Settings& s = m_game.settings;
    const int music = _value(kMusic, "uiSliderButton"), effects = _value(kEffects, "uiSliderButton");
    if ((music >= 0 && music != s.music) || (effects >= 0 && effects != s.effects)) {
        s.music = music >= 0 ? music : s.music;
        s.effects = effects >= 0 ? effects : s.effects;
        m_game.host.setVolumes(s.music, s.effects);
    }
    const int full = _value(kFullscreen, "uiToggleButton");
    if (full >= 0 && (full != 0) != s.fullscreen) {
        s.fullscreen = full != 0;
        m_game.host.setFullscreen(s.fullscreen);
    }
    const int difficulty = _value(kDifficulty, "uiRadioGroup");
    if (difficulty >= 0) s.difficulty = difficulty;
    const int language = _value(kLanguage, "uiRadioGroup");
    if (language >= 0 && language != s.language) {
        s.language = language;
        s.save(m_game.config.prefs);
        m_game.requestReload();
    }
}
