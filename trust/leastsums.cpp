#include "trust/leastsums.h"

#include <algorithm>
#include <limits>

namespace trust
{
namespace
{

constexpr std::size_t kQuestionsKept = 30; // two comparisons of all models

void append(std::vector<double>& numbers, const sternvolmer::RatioPoints& points)
{
    const auto count = points.count + 1; // with the slot that is no point
    numbers.push_back(points.tau0);
    numbers.insert(numbers.end(), points.Q.begin(), points.Q.begin() + count);
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

const LeastSums::Answer* LeastSums::answer(const analysis::Request& request) const
{
    const LeastQuestion question(request);
    const auto known = std::find_if(m_answers.begin(), m_answers.end(),
                                    [&](const Answer& answer) { return answer.question == question; });
    return known == m_answers.end() ? nullptr : &*known;
}

LeastSums::Answer& LeastSums::newestAnswer(const analysis::Request& request)
{
    const Answer* known = answer(request);
    const Answer newest = known ? *known : Answer{.question = LeastQuestion(request), .minima = {}};
    std::erase_if(m_answers, [&](const Answer& other) { return other.question == newest.question; });
    m_answers.push_front(newest);
    if (m_answers.size() > kQuestionsKept)
        m_answers.pop_back();
    return m_answers.front();
}

bool LeastSums::searched(const analysis::Request& request) const
{
    const Answer* known = answer(request);
    return known && known->searched;
}

std::vector<leastsquares::Minimum> LeastSums::minima(const analysis::Request& request) const
{
    const Answer* known = answer(request);
    return known ? known->minima : std::vector<leastsquares::Minimum>{};
}

double LeastSums::leastSum(const analysis::Request& request) const
{
    double least = std::numeric_limits<double>::infinity();
    for (const leastsquares::Minimum& minimum : minima(request))
        least = std::min(least, minimum.sumOfSquares);
    return least;
}

void LeastSums::keep(const analysis::Request& request, const std::vector<leastsquares::Minimum>& minima)
{
    Answer& newest = newestAnswer(request);
    if (newest.searched)
        for (const leastsquares::Minimum& minimum : minima)
            offer(request, minimum);
    else
        newest.minima.insert(newest.minima.end(), minima.begin(), minima.end());
    newestAnswer(request).searched = true;
}

void LeastSums::offer(const analysis::Request& request, const leastsquares::Minimum& minimum)
{
    constexpr double kLower = 1 - 1e-9; // a change above rounding
    const leastsquares::FreeSlots free = leastsquares::freeSlots(request.options.parameterCount, request.options.fix);
    const leastsquares::Ranges counted = countedRanges(request.model);
    const bool counts = std::all_of(free.begin(), free.end(), [&](std::size_t slot) {
        return minimum.values[slot] >= counted[slot].low && minimum.values[slot] <= counted[slot].high;
    });
    if (counts && minimum.sumOfSquares < leastSum(request) * kLower)
        newestAnswer(request).minima.push_back(minimum);
}

} // namespace trust
