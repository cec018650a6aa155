#pragma once

#include "tests/support/application.h"

namespace support
{

/// Acridone quenched by iodide in water: Q in M, lifetimes in ns, intensities as printed (CC0 teaching workshop,
/// github.com/chemfd/PhotochemistryWorkshopAnswers).
inline const QList<Column> kAcridone{
    {"0", "1", "1", "17.6", "", "", "", "", "16580"}, {"0.04", "1", "1", "3.9", "", "", "", "", "3753"},
    {"0.1", "1", "1", "1.8", "", "", "", "", "1566"}, {"0.2", "1", "1", "0.95", "", "", "", "", "721"},
    {"0.3", "1", "1", "0.64", "", "", "", "", "446"}, {"0.5", "1", "1", "0.39", "", "", "", "", "242"},
    {"0.8", "1", "1", "0.25", "", "", "", "", "121"}};

} // namespace support
