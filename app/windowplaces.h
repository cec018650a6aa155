#pragma once

class QWidget;

/// The places at which windows appear, in twips.
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

struct Extent {
    int width, height;
};
struct TableCorners {
    WindowCorner decay, analysis;
};
/// Where both tables appear. They cover neither the main window nor the plots if the screen has room below the main
/// window or on its right; otherwise they go to the lower corners of the screen.
TableCorners tableCorners(Extent screen, Extent table);

inline constexpr int kRatioPlotSize = 5000; // width and height of the plot of a Stern-Volmer command

/// The place of a window beside or below the main window, or over it if the screen is too narrow.
struct RoomyPlace {
    int top, left;
    int crampedTop, crampedLeft;
    int height, width;
};
inline constexpr RoomyPlace kDetailsPlace{0, 16350, 1000, 2000, 9900, 10500};
inline constexpr RoomyPlace kStartsPlace{10350, 16350, 2000, 3000, 5000, 8900}; // below the details, beside the boxes
inline constexpr RoomyPlace kImportPlace{1000, 16350, 600, 3500, 9600, 10500};
inline constexpr RoomyPlace kExportPlace{1500, 8000, 1500, 3000, 3300, 6900};
inline constexpr RoomyPlace kComparisonPlace{8700, 1500, 1500, 2500, 7800, 18600};
inline constexpr RoomyPlace kPreparationPlace{8700, 1500, 1500, 2500, 6600, 16500};
inline constexpr RoomyPlace kLifetimesPlace{1500, 1500, 1000, 1500, 10800, 17400};

/// Places a window that is not visible yet, and always brings it to the front. It is larger where the font is.
void showInFront(QWidget& window, const RoomyPlace& place);

} // namespace app
