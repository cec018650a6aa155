#include "trust/leastsums.h"

#include <algorithm>

namespace trust
{
namespace
{

constexpr std::size_t kQuestionsKept = 30; // two comparisons of all models

void append(std::vector<double>& numbers, const sternvolmer::RatioPoints& points)
{
    const auto count = points.count + 1; // with the slot that is no point
    numbers.push_back(points.tau0);
    numbers.insert(numbers.end(), points.conc.begin(), points.conc.begin() + count);
    numbers.insert(numbers.end(), points.ratio.begin(), points.ratio.begin() + count);
}

void append(std::vector<double>& numbers, const decay::SampleTable& samples)
{
    for (int s = 1; s <= samples.SampleCount; ++s) {
        const decay::SampleRecord& sample = samples.SampleData[static_cast<std::size_t>(s)];
        numbers.insert(numbers.end(), {sample.Conc, static_cast<double>(sample.NComp), samples.TimeMax,
                                       static_cast<double>(sample.LastFitIndex)});
        numbers.insert(numbers.end(), sample.A.begin(), sample.A.end());
        numbers.insert(numbers.end(), sample.Tau.begin(), sample.Tau.end());
    }
}

} // namespace

LeastQuestion::LeastQuestion(const analysis::Request& request)
{
    m_numbers = {static_cast<double>(request.data.index()), static_cast<double>(request.model)};
    if (models::row(request.model).usesProbe(analysis::methodOf(request)))
        m_numbers.push_back(request.Cp);
    for (std::size_t slot = 1; slot <= static_cast<std::size_t>(request.options.parameterCount); ++slot) {
        const bool fixed = request.options.fix[slot] == 1;
        m_numbers.insert(m_numbers.end(), {fixed ? 1.0 : 0.0, fixed ? request.values[slot] : 0});
    }
    std::visit([this](const auto& data) { append(m_numbers, data); }, request.data);
}

std::optional<SearchResult> LeastSums::found(const analysis::Request& request) const
{
    const LeastQuestion question(request);
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& known) { return known.question == question; });
    return entry == m_entries.end() ? std::nullopt : std::optional(entry->found);
}

void LeastSums::keep(const analysis::Request& request, const SearchResult& found)
{
    const LeastQuestion question(request);
    std::erase_if(m_entries, [&](const Entry& known) { return known.question == question; });
    m_entries.push_front({question, found});
    if (m_entries.size() > kQuestionsKept)
        m_entries.pop_back();
}

} // namespace trust
