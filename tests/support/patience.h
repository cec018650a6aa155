#pragma once

#include <QtGlobal>

namespace support
{

/// Milliseconds: a second for users; unoptimised and sanitised builds get more, a quadratic step would need hours.
#ifdef NDEBUG
inline constexpr qint64 kPatience = 1000;
#else
inline constexpr qint64 kPatience = 10'000;
#endif

} // namespace support
