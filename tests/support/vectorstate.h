#pragma once

#include <optional>

#if defined(__x86_64__)
#include <cpuid.h>
#include <immintrin.h>
#endif

namespace support
{

#if defined(__x86_64__)

inline bool tellsStatesInUse()
{
    constexpr unsigned kSystemSavesStates = 1U << 27;  // leaf 1, ecx: OSXSAVE
    constexpr unsigned kStatesInUseReadable = 1U << 2; // leaf 0xD.1, eax: XGETBV with argument 1
    unsigned a = 0, b = 0, c = 0, d = 0;
    if (__get_cpuid(1, &a, &b, &c, &d) == 0 || (c & kSystemSavesStates) == 0)
        return false;
    return __get_cpuid_count(0xD, 1, &a, &b, &c, &d) != 0 && (a & kStatesInUseReadable) != 0;
}

__attribute__((target("xsave"))) inline bool upperHalvesMarked()
{
    constexpr unsigned long long kUpperHalves = 1U << 2;
    return (_xgetbv(1) & kUpperHalves) != 0;
}

/// True while the upper halves of the vector registers are in use; nullopt if the processor does not report it.
inline std::optional<bool> upperHalvesInUse()
{
    return tellsStatesInUse() ? std::optional(upperHalvesMarked()) : std::nullopt;
}

#else

inline std::optional<bool> upperHalvesInUse() { return std::nullopt; }

#endif

} // namespace support
