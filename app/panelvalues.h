#pragma once

#include "fit/gaussnewton.h"
#include "models/catalogue.h"

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

/// The numbers of the panel; rate constants in s^-1 or M^-1 s^-1 as the model has them.
struct PanelValues {
    double kq1 = 0, kq2 = 0;
    double K = 0;  // M^-1
    double F = 0;  // population ratio of the two sites
    double s = 0;  // nm
    double Cp = 0; // probe, M
    int iterationLimit = 0;
    double tolerance = 0;
};
PanelValues panelValues(const PanelState& panel);

/// False if a number that an analysis of the panel's model needs is infinite: a start value, the tolerance, the
/// iteration limit or, if the law contains it, the probe concentration.
bool boxesFinite(const PanelState& panel, models::Analysis analysis);

/// The start of a fit of the panel's model: number of parameters, start values (not logarithms) and flags, slots 1..3.
struct StartParameters {
    int count = 0;
    fit::Parameters values{};
    fit::Flags fix{};
    fit::Flags aboveZero{0, 1, 1, 1};
};
StartParameters startParameters(const PanelState& panel, models::Analysis analysis);

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
