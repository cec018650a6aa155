#pragma once

#include <QtGlobal>

namespace support
{

/// Milliseconds: a user waits one second. Unoptimised and sanitised builds get more time; a quadratic algorithm would
/// take hours.
#ifdef NDEBUG
inline constexpr qint64 kWaitLimit = 1000;
#else
inline constexpr qint64 kWaitLimit = 10'000;
#endif

} // namespace support
