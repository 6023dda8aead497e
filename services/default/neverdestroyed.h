// Storage for the built-in service objects. A constexpr-constructible object placed here is initialised
// before any code runs (constant initialisation) and never destroyed, so other static initialisers and
// destructors may use it in any order.
#pragma once

namespace ui {

template <class T> union NeverDestroyed {
    T value;
    constexpr NeverDestroyed() : value() {}
    ~NeverDestroyed() {}
};

} // namespace ui
