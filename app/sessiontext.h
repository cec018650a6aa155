#pragma once

#include "app/panelvalues.h"
#include "app/resultstore.h"
#include "app/settings.h"
#include "app/sheettext.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Session files: the panel's texts, the data sheet and the results as lines of text.
namespace app
{

inline constexpr std::string_view kSessionFirstLine = "Vorlo File";

/// The longest session in bytes: 400 for each of the 99 x 99 cells that a sheet can have. A longer session is not
/// written, so that nothing is lost; a longer file is not read to its end, so that a damaged file costs little.
inline constexpr int kMaxSessionBytes = 4'000'000;

inline constexpr int kLeastCount = 2; // a title and one data row or column
inline constexpr int kMostCount = 100;

/// The contents of a session file. They include LogMode and AssessmentMode, but no other settings, and the panel
/// without its check boxes and the option of the fit region.
struct Session {
    PanelState panel;
    Settings settings;
    int rows = kSheetRows, columns = kSheetColumns;
    std::vector<std::vector<std::string>> cells; // without the titles: [row - 1][column - 1]
    ResultStore results;
};

/// The lines of a session file, ended by CR LF. `cells` has rows - 1 rows of columns - 1 texts.
std::string writeSession(const Session& session);

/// Whether a file with these first bytes is a session file. At least one byte more than kSessionFirstLine has is
/// needed.
bool startsSession(std::string_view bytes);

/// `before`, overwritten with the contents of the text; the results come from the text alone. nullopt: the first line
/// is not the first line of a session file.
std::optional<Session> readSession(std::string_view text, Session before);

} // namespace app
