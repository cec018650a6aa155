#pragma once

#include "plot/canvas.h"

#include <string>
#include <vector>

namespace plot
{

/// The place of a marker on the surface, twips.
struct MarkerPlace {
    double x = 0;
    double y = 0;
};

struct LegendEntry {
    int number = 0; // of the sample
    double Q = 0;   // quencher, M
    Color color = kBlack;
    std::vector<MarkerPlace> markers;
};

/// "3: 0.1 M".
std::string legendText(const LegendEntry& entry);

/// Stores which markers of a chart belong to which sample.
class Legend
{
public:
    void clear() { m_entries.clear(); }
    void beginSample(int number, double Q) { m_entries.push_back({number, Q, kBlack, {}}); }
    /// Adds a marker to the current sample. Markers before the first sample belong to no sample.
    void addMarker(MarkerPlace place, Color color);

    const std::vector<LegendEntry>& entries() const { return m_entries; }
    /// The sample with the marker nearest to a place; nullptr if there is none within `reach` twips.
    const LegendEntry* nearest(MarkerPlace place, double reach) const;

private:
    std::vector<LegendEntry> m_entries;
};

} // namespace plot
