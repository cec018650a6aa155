#pragma once

#include "trust/startsearch.h"

#include <deque>
#include <optional>

namespace trust
{

/// What decides the least sum of squares of a fit: data, model, probe and fixed constants, but neither start nor mode.
struct LeastQuestion {
    explicit LeastQuestion(const analysis::Request& request);
    bool operator==(const LeastQuestion&) const = default;

private:
    std::vector<double> m_numbers;
};

/// The lowest sums of squares that were found for the last few questions. Every search and every fit offers what it
/// found, so that a lower sum found anywhere becomes the least everywhere.
class LeastSums
{
public:
    /// What a search has found; nothing if there was no search.
    std::optional<SearchResult> found(const analysis::Request& request) const;
    void keep(const analysis::Request& request, const SearchResult& found);

private:
    struct Entry {
        LeastQuestion question;
        SearchResult found;
    };
    std::deque<Entry> m_entries; // the last one first
};

} // namespace trust
