#pragma once

#include "fit/gaussnewton.h"

#include <bit>
#include <cmath>
#include <cstdint>

namespace fit
{

/// Converts the engine's parameters to real units: in log mode exp of every slot, fitted or not.
inline Parameters realParameters(int logMode, const Parameters& a)
{
    if (logMode != 1)
        return a;
    Parameters real{};
    for (std::size_t j = 1; j < real.size(); ++j)
        real[j] = std::exp(a[j]);
    return real;
}

/// Compared as integers, without a branch for each.
inline bool sameBits(const Parameters& a, const Parameters& b)
{
    std::uint64_t difference = 0;
    for (std::size_t j = 1; j < a.size(); ++j)
        difference |= std::bit_cast<std::uint64_t>(a[j]) ^ std::bit_cast<std::uint64_t>(b[j]);
    return difference == 0;
}

/// realParameters() for a problem that evaluates its points with the same few vectors in turn. Each vector is converted
/// once, and in normal mode nothing is copied.
class RealParameters
{
public:
    /// Valid until the next call and as long as a is.
    const Parameters& of(int logMode, const Parameters& a)
    {
        if (logMode != 1)
            return a;
        for (std::size_t i = 0; i < m_count; ++i)
            if (sameBits(m_kept[i].a, a))
                return m_kept[i].real;
        if (m_count == m_kept.size())
            m_count = 0;
        Converted& converted = m_kept[m_count++];
        converted = {a, realParameters(logMode, a)};
        return converted.real;
    }

private:
    struct Converted {
        Parameters a{};
        Parameters real{};
    };
    std::array<Converted, 8> m_kept{}; // a base vector, three shifted vectors, and the same four with another rounding
    std::size_t m_count = 0;
};

} // namespace fit
