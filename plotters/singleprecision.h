#pragma once

#include <cmath>
#include <limits>

namespace Vexal {

// Rounds a double to float like a plain conversion, but saturates finite values
// beyond the float range at +-FLT_MAX where the plain conversion is undefined.
// NaN and infinities pass through.
inline float toFloat(double v)
{
    constexpr double largest = std::numeric_limits<float>::max();
    if (std::isfinite(v) && std::fabs(v) > largest)
        return v > 0 ? std::numeric_limits<float>::max() : std::numeric_limits<float>::lowest();
    return float(v);
}

// A double split into two floats whose sum keeps the double's low bits: msb is
// the value rounded to float, lsb what that rounding lost (formed in double).
struct SplitDouble
{
    float msb = 0.0f; // most significant part
    float lsb = 0.0f; // least significant part
};

inline SplitDouble splitDouble(double v)
{
    const float msb = toFloat(v);
    return {msb, toFloat(v - double(msb))};
}

} // namespace Vexal
