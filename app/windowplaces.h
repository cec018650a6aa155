#pragma once

/// The places at which windows appear, in twips. Windows for start values and judgements of fits choose theirs by the
/// room on the screen.
namespace app
{

struct WindowPlace {
    int top, left, height, width;
};
inline constexpr WindowPlace kMainWindowPlace{0, 6500, 8160, 9750};
inline constexpr WindowPlace kSettingsPlace{1000, 5000, 3645, 3645};
inline constexpr WindowPlace kAnalyzerPlace{5000, 7000, 4250, 3200};

struct WindowCorner {
    int top, left;
};
// Plots stack to the left of the main window.
inline constexpr WindowCorner kDecayPlotCorner{0, 1000};
inline constexpr WindowCorner kAnalysisPlotCorner{5000, 1000};
// Tables are placed below the main window, where they cover neither the main window nor the plots.
inline constexpr WindowCorner kDecayTableCorner{9600, 6500};
inline constexpr WindowCorner kAnalysisTableCorner{9600, 11000};

inline constexpr int kRatioPlotSize = 5000; // width and height of the plot of a Stern-Volmer command

} // namespace app
