// Recognises objects whose class is exactly one of the library's own, not a class derived from it.
//
// The frame and input walks call the code of such a widget directly instead of through its virtual
// operations (src/core/uiframewalk.cpp). A class records its virtual table in its constructor's body,
// where the object's virtual table is the class's own even while a derived class is being constructed;
// a game's class derived from it therefore never matches and keeps every virtual operation it overrides.
#pragma once
#include <atomic>
#include <cstring>

namespace ui {

class ExactClass {
public:
    // Called from the constructor of the class being recognised, with its `this`.
    void record(const void* object) noexcept { m_vtable.store(vtableOf(object), std::memory_order_relaxed); }
    bool of(const void* object) const noexcept {
        return vtableOf(object) == m_vtable.load(std::memory_order_relaxed);
    }

private:
    // The virtual table pointer, the first word of every object of a polymorphic class without bases
    // beyond a single chain (the layout of both the Itanium and the Microsoft ABIs).
    static const void* vtableOf(const void* object) noexcept {
        const void* vtable;
        std::memcpy(&vtable, object, sizeof vtable);
        return vtable;
    }
    // Written by constructors on loading threads too, always with the same value.
    std::atomic<const void*> m_vtable{nullptr};
};

extern ExactClass g_exactContainer; // uiNonVisualWidget
extern ExactClass g_exactButton;    // uiButton

} // namespace ui
