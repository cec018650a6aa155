#pragma once

namespace app
{

/// The choices of the "Output Settings" dialog; numbers are the option indexes.
struct Settings {
    int TimeScale = 1;      // 0 "sec", 1 "ns"
    int IntensityScale = 0; // 0 "Normal", 1 "log10(I(t))"
    int LogMode = 1;        // 0 "normal", 1 "log mode"
    int AssessmentMode = 1; // 0 R2, 1 Se
    bool operator==(const Settings&) const = default;
};

} // namespace app
