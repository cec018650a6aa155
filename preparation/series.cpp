#include "preparation/series.h"

#include "fit/numbertext.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace preparation
{
namespace
{

constexpr std::string_view kBetween = " ;\t"; // numbers in one cell
constexpr double kLargest = 1e100;            // squares and products of three numbers stay finite

struct Range {
    double least, largest;
    const char* reason; // why no other number is taken
};
constexpr Range kAnyNumber{-kLargest, kLargest, "is beyond all instruments"};
constexpr Range kVolume{0, kLargest, "is no volume"};
constexpr Range kAboveZero{1e-100, kLargest, "must be above 0"};
// Baselines leave absorbances slightly below 0; above 3 a thousandth of the light would pass.
constexpr Range kAbsorbance{-0.1, 3, "is no absorbance from -0.1 to 3"};

bool isBlank(std::string_view text) { return text.find_first_not_of(kBetween) == std::string_view::npos; }

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

/// Reads on after the first refusal, which is the one that is kept.
class Reader
{
public:
    explicit Reader(const TypedSeries& typed) : m_typed(typed) {}

    std::variant<Series, Refusal> read()
    {
        const int count = sampleCount();
        if (count == 0)
            refuse(Cell{1, Entry::Reading}, "is empty: type the measured intensities");
        readBoxes();
        for (int sample = 1; sample <= count; ++sample)
            readSample(sample);
        if (m_refusal)
            return *m_refusal;
        return m_series;
    }

private:
    const std::string& text(const Cell& cell) const
    {
        return m_typed.samples[static_cast<std::size_t>(cell.sample - 1)][static_cast<std::size_t>(cell.entry)];
    }
    bool anyTyped(int sample) const
    {
        for (std::size_t entry = 0; entry < kEntries.size(); ++entry)
            if (isUsed(static_cast<Entry>(entry), m_typed.steps) && !isBlank(text({sample, static_cast<Entry>(entry)})))
                return true;
        return false;
    }
    int sampleCount() const
    {
        int count = static_cast<int>(m_typed.samples.size());
        while (count > 0 && !anyTyped(count))
            --count;
        return count;
    }

    void refuse(const Place& place, const std::string& reason)
    {
        if (!m_refusal)
            m_refusal = refused(place, reason);
    }

    std::vector<double> numbers(std::string_view text, const Place& place, const Range& range)
    {
        std::vector<double> found;
        while (!text.empty()) {
            const std::size_t end = std::min(text.find_first_of(kBetween), text.size());
            if (end > 0)
                found.push_back(number(text.substr(0, end), place, range));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
        return found;
    }

    double number(std::string_view text, const Place& place, const Range& range)
    {
        const std::optional<double> value = fit::strictNumber(text);
        if (!value)
            refuse(place, quoted(text) + " is not a number" +
                              (text.find(',') == std::string_view::npos ? "" : "; the decimal sign is a point"));
        else if (!(*value >= range.least && *value <= range.largest))
            refuse(place, quoted(text) + ' ' + range.reason);
        return value.value_or(0);
    }

    double oneNumber(std::string_view text, const Place& place, const Range& range)
    {
        const std::vector<double> found = numbers(text, place, range);
        if (found.size() != 1)
            refuse(place, found.empty() ? "is empty" : "has more than one number");
        return found.empty() ? 0 : found.front();
    }

    void readBoxes()
    {
        m_series.steps = m_typed.steps;
        m_series.blanks = {{0.0}};
        if (!m_typed.steps.dilution)
            return;
        m_series.V0 = oneNumber(m_typed.V0, Box::V0, kAboveZero);
        m_series.stock = oneNumber(m_typed.stock, Box::Stock, kAboveZero);
    }

    void readSample(int number)
    {
        Sample sample;
        const Steps& steps = m_typed.steps;
        if (steps.dilution)
            sample.added = readAdded(number);
        sample.readings = readings(number);
        if (steps.blank)
            readBlank(number);
        sample.blank = m_series.blanks.size() - 1;
        if (steps.innerFilter) {
            sample.Aex = oneNumber(text({number, Entry::Aex}), Cell{number, Entry::Aex}, kAbsorbance);
            sample.Aem = oneNumber(text({number, Entry::Aem}), Cell{number, Entry::Aem}, kAbsorbance);
        }
        m_series.samples.push_back(sample);
    }

    double readAdded(int number)
    {
        const Cell cell{number, Entry::Added};
        if (number == 1 && isBlank(text(cell)))
            return 0;
        const double added = oneNumber(text(cell), cell, kVolume);
        if (number == 1 && added != 0)
            refuse(cell, "must be 0: the first sample is the reference without quencher");
        return added;
    }

    /// Without the mean of replicates, the first reading.
    std::vector<double> readings(int number)
    {
        std::vector<double> all;
        for (const Entry entry : {Entry::Reading, Entry::SecondReading, Entry::ThirdReading})
            if (isUsed(entry, m_typed.steps))
                for (const double reading : numbers(text({number, entry}), Cell{number, entry}, kAnyNumber))
                    all.push_back(reading);
        if (all.empty())
            refuse(Cell{number, Entry::Reading}, "is empty");
        if (!m_typed.steps.replicates && all.size() > 1)
            all.resize(1);
        return all;
    }

    void readBlank(int number)
    {
        const Cell cell{number, Entry::Blank};
        const std::vector<double> found = numbers(text(cell), cell, kAnyNumber);
        if (number == 1 && found.empty())
            refuse(cell, "is empty: type a reading without the probe");
        if (number == 1)
            m_series.blanks.clear();
        if (!found.empty())
            m_series.blanks.push_back(found);
    }

    const TypedSeries& m_typed;
    Series m_series;
    std::optional<Refusal> m_refusal;
};

} // namespace

Refusal refused(const Place& place, const std::string& reason)
{
    std::string name;
    if (const Cell* cell = std::get_if<Cell>(&place))
        name = "Sample " + std::to_string(cell->sample) + ", " + row(cell->entry).title;
    else
        name = std::get<Box>(place) == Box::V0 ? "V0, the volume of the reference"
                                               : "Stock, the concentration of the added solution";
    return {place, name + ": " + reason + '.'};
}

std::variant<Series, Refusal> readSeries(const TypedSeries& typed) { return Reader(typed).read(); }

} // namespace preparation
