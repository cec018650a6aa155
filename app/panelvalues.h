#pragma once

#include <string>

namespace app
{

/// The state of the parameter panel: texts as typed, options as clicked.
struct PanelState {
    std::string kq1 = "1e+7";
    std::string kq2 = "1e+6";
    std::string K = "50";
    std::string F = "0.5";
    std::string s = "0.82";
    std::string Cp = "50e-6";
    std::string tolerance = "0.0001";
    std::string iteration = "100";
    std::string fitRegion = "1e-3";
    int Model = 1;
    int FixKq2 = 0;
    int FixF = 0;
    bool allChosen = true; // "All" of the fit region is the chosen option
    bool operator==(const PanelState&) const = default;
};

/// The panel read as numbers; rate constants in s^-1 or M^-1 s^-1 as the model has them.
struct PanelValues {
    int model = 1;
    double kq1 = 0, kq2 = 0;
    double K = 0;              // M^-1
    double F = 0;              // population ratio of the two sites
    double s = 0;              // nm
    double Cp = 0;             // probe, M
    double iterationLimit = 0; // whole; infinite when the text is
    double tolerance = 0;
    bool fixKq2 = false, fixF = false;
};
PanelValues panelValues(const PanelState& panel);

/// The panel as commands see it.
class Panel
{
public:
    virtual ~Panel() = default;
    virtual PanelState panelState() const = 0;
};

/// The panel as commands that fill it see it.
class PanelEditor : public Panel
{
public:
    /// Shows the texts and choices as if the user had entered them: the model's boxes and captions follow.
    virtual void setPanelState(const PanelState& panel) = 0;
};

} // namespace app
