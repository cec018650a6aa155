#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

namespace decay
{

inline constexpr int kMaxSamples = 20;
inline constexpr int kMaxComponents = 3;
inline constexpr int kGridSize = 256;

using Grid = std::array<double, kGridSize>;
using Components = std::array<double, kMaxComponents + 1>; // slots 1..3 are used, slot 0 is not

/// One sample: a column of the data sheet.
struct SampleRecord {
    double Conc = 0;         // total quencher, M
    int NComp = 0;           // decay components, 1..3
    Components A{};          // amplitudes; sum 1 after normalisation
    Components Tau{};        // lifetimes, s
    Grid T{};                // time grid, s
    Grid IExp{};             // observed decay on the grid, linear
    Grid IFit{};             // fitted decay on the grid, linear
    Grid observedLog{};      // base-10 logarithm of the observed decay, as plots and tables show it
    Grid fittedLog{};        // the same for the fitted decay
    Components Rate{};       // 1/Tau, s^-1
    double sumOfSquares = 0; // of the samples up to this one
    double mean = 0;         // observed intensity of the samples up to this one, divided by 50
    double TEnd = 0;         // time at which the decay reaches the fit-region level, s
    int LastFitIndex = 49;   // last grid index used in fitting
    double Phi = 0;          // steady-state intensity
    double SVRatio = 0;      // Phi of the reference / Phi
};

/// All samples, slots 1..SampleCount; slot 1 is the quencher-free reference, slot 0 is never filled.
struct SampleTable {
    /// Always kMaxSamples + 1 records; on the heap, because every command that waits for a nested command holds a
    /// table.
    std::vector<SampleRecord> SampleData = std::vector<SampleRecord>(kMaxSamples + 1);
    int SampleCount = 0;
    double FitRegionLevel = 0; // fraction of the initial intensity
    double TimeMax = 0;        // end of the time grid, s
};

/// Text of a data-sheet cell, row and column counted with the titles as 0.
using CellText = std::function<std::string(int row, int column)>;

} // namespace decay
