#include "plot/legend.h"

#include "fit/numbertext.h"

#include <cmath>

namespace plot
{

std::string legendText(const LegendEntry& entry)
{
    return std::to_string(entry.number) + ": " + fit::plainText(entry.Q) + " M";
}

void Legend::addMarker(MarkerPlace place, Color color)
{
    if (m_entries.empty())
        return;
    m_entries.back().color = color;
    m_entries.back().markers.push_back(place);
}

const LegendEntry* Legend::nearest(MarkerPlace place, double reach) const
{
    const LegendEntry* found = nullptr;
    for (const LegendEntry& entry : m_entries)
        for (const MarkerPlace& marker : entry.markers) {
            const double distance = std::hypot(marker.x - place.x, marker.y - place.y);
            if (distance <= reach) {
                reach = distance;
                found = &entry;
            }
        }
    return found;
}

} // namespace plot
