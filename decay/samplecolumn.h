#pragma once

#include "decay/sampletable.h"

namespace decay
{

/// Rows of the data sheet that hold a sample's values; a column is a sample.
inline constexpr int kConcRow = 1;      // total quencher, M
inline constexpr int kComponentRow = 2; // number of decay components
inline constexpr int kPhiRow = 9;       // steady-state intensity

/// Rows of component k = 1..3.
constexpr int amplitudeRow(int k) { return 2 * k + 1; }
constexpr int lifetimeRow(int k) { return 2 * k + 2; } // ns

/// True if the sheet has a sample in this column: the column is at most 20, and its concentration cell is not empty.
bool hasSample(const CellText& cell, int column);

/// The first column without a sample; analyses read the columns before it.
int endOfSamples(const CellText& cell);

/// Reads the component count and its amplitudes, lifetimes (s) and rates (s^-1) into the record.
/// False if the count is not 1, 2 or 3 (the record then has no components) or if an amplitude or lifetime is 0.
bool readComponents(const CellText& cell, int column, SampleRecord& record);

} // namespace decay
