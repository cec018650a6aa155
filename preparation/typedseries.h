#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

/// Corrects measured intensities before they are analysed: mean of repeated readings, blank, inner filter effect,
/// dilution, in this order.
namespace preparation
{

/// The corrections that are made.
struct Steps {
    bool replicates = true;
    bool blank = false;
    bool innerFilter = false;
    bool dilution = false;
    bool operator==(const Steps&) const = default;
};

/// What is typed for a sample.
enum class Entry { Added, Reading, SecondReading, ThirdReading, Blank, Aex, Aem };

struct EntryRow {
    const char* title;
    bool Steps::*step; // that needs the entry; none: needed always
    const char* meaning;
};
inline constexpr std::array<EntryRow, 7> kEntries{{
    {"Added", &Steps::dilution, "volume of stock solution added since the sample above, in the unit of V0"},
    {"Reading", nullptr, "measured intensity; several readings with blanks between them"},
    {"Reading 2", &Steps::replicates, "second reading of the same sample"},
    {"Reading 3", &Steps::replicates, "third reading; further ones beside it with blanks between them"},
    {"Blank", &Steps::blank, "reading without the probe, or several; an empty cell takes the blank above"},
    {"Aex", &Steps::innerFilter, "absorbance of the sample at the excitation wavelength, 1 cm"},
    {"Aem", &Steps::innerFilter, "absorbance of the sample at the emission wavelength, 1 cm"},
}};
constexpr const EntryRow& row(Entry entry) { return kEntries[static_cast<std::size_t>(entry)]; }

constexpr bool isUsed(Entry entry, const Steps& steps) { return !row(entry).step || steps.*row(entry).step; }

using TypedSample = std::array<std::string, kEntries.size()>; // by Entry

struct TypedSeries {
    Steps steps{};
    std::string V0{};    // volume of the reference, in any unit
    std::string stock{}; // concentration of the quencher in the added solution, M
    std::vector<TypedSample> samples{};
    bool operator==(const TypedSeries&) const = default;
};

} // namespace preparation
