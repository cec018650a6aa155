#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

/// Shared by all fuzz targets. A target reports a fault with a trap, so its checks work in every build type.
namespace fuzz
{

inline void check(bool holds)
{
    if (!holds)
        __builtin_trap();
}

/// Number of fits with at least one update so far. An input without such a fit has tested only the reader.
inline int fits = 0;

/// Takes values from the front of an input; gives zeros when the input is used up.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

    template <class Number>
    Number take()
    {
        static_assert(std::is_arithmetic_v<Number>);
        Number value{};
        if (m_rest.size() < sizeof value) {
            m_rest = {};
            return value;
        }
        std::memcpy(&value, m_rest.data(), sizeof value);
        m_rest.remove_prefix(sizeof value);
        return value;
    }

    /// A whole number from 0 to most.
    int takeUpTo(int most) { return take<std::uint8_t>() % (most + 1); }

    std::string_view rest() const { return m_rest; }

private:
    std::string_view m_rest;
};

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
