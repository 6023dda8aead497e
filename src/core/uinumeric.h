// Conversions that keep out-of-range values defined (game data may carry any number, and a float or a
// sum beyond the int range must not become undefined behaviour), and a float rounding that keeps the
// whole-number part of exact results.
#pragma once
#include <climits>
#include <cmath>

namespace ui {

inline int clampToInt(long long v) {
    return v < INT_MIN ? INT_MIN : v > INT_MAX ? INT_MAX : static_cast<int>(v);
}

// Sums and products of description values (positions, sizes, gaps) that stay within the int range.
inline int clampedSum(long long a, long long b) {
    return clampToInt(a + b);
}
inline int clampedDiff(long long a, long long b) {
    return clampToInt(a - b);
}
inline int clampedProduct(long long a, long long b) {
    return clampToInt(a * b);
}

// Widget positions and sizes, and the pointer positions the game reports, stay within this many
// pixels of 0: far beyond any screen, and the offsets of a tree as deep as a description may nest
// (256 levels) still add up within the int range.
constexpr int kCoordLimit = 1 << 20;
inline int clampCoord(long long v) {
    return v < -kCoordLimit ? -kCoordLimit : v > kCoordLimit ? kCoordLimit : static_cast<int>(v);
}

// Truncates towards zero; NaN gives 0.
inline int truncToInt(double v) {
    if (!(v == v)) return 0;
    return v <= INT_MIN ? INT_MIN : v >= INT_MAX ? INT_MAX : static_cast<int>(v);
}

// The float next to v on the side of zero. Truncating it gives the same whole number as truncating v,
// so a value a hair below a whole number (a flash peak of 254.9999...) does not round up to it.
inline float floatTowardZero(double v) {
    float f = static_cast<float>(v);
    if (std::fabs(f) > std::fabs(v)) f = std::nextafter(f, 0.0f);
    return f;
}

} // namespace ui
