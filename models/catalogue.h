#pragma once

#include "models/decaylaws.h"
#include "models/ratiolaws.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

/// The catalogue of models: one row for each model. All other code asks the row.
namespace models
{

inline constexpr int kModelCount = 13;

enum class Analysis { SternVolmer, Decay };

/// Quantities that a result carries; a mask is a sum of these bits.
enum Reported : int { KorF = 1, Kq1 = 2, Kq2 = 4, Kq22 = 8, Radius = 16 };

/// The box into which the start value of a parameter is typed.
enum class Box { K, F, kq1, kq2 };

// Units as captions spell them.
inline constexpr std::string_view kPerMolar = "M-1";
inline constexpr std::string_view kPerSecond = "s-1";
inline constexpr std::string_view kPerMolarSecond = "M-1s-1";

/// The usual range of a parameter in quenching experiments, in its unit.
struct Sizes {
    double low = 0;
    double high = 0;
};

/// One fitted parameter of a model.
struct Parameter {
    Box box = Box::K;
    std::string_view label;     // "kq2 :", as reports print it; empty: no parameter
    Reported reported = KorF;   // under which name the result carries it
    std::string_view unit;      // empty: a plain number
    std::string_view meaning;   // in words
    Sizes usual;                // where searches start
    bool fixableInDecay = true; // its "Fix" check box also holds for decay curves
    bool restored = true;       // "Restore" copies it back into the box
    bool jumpsInDecay = false;  // decay curves jump along it, because it decides where a series ends

    /// "kq2"
    std::string name() const { return std::string(label.substr(0, label.find(' '))); }
    /// "kq2 /M-1s-1"; the name alone for a plain number.
    std::string caption() const;
    /// True for collisional rate constants. The rate constant of a quencher beside the probe is in s^-1 instead.
    constexpr bool isCollisional() const { return unit == kPerMolarSecond; }
};

/// The law of a model for ratios. In formulas, parameters have the names of their boxes; kLawSymbols explains the other
/// symbols.
struct RatioDescription {
    std::string_view formula;
    RatioLaw law = nullptr;
};

/// The law of a model for ratios tau0/tau of mean lifetimes, weighted by the amplitudes; empty if there is none. Its
/// collisions are those of the ratio law. Decay laws may count the quencher for collisions otherwise.
struct LifetimeDescription {
    std::string_view formula;
    RatioLaw law = nullptr;
    /// The ratio is 1 + X with X in proportion to tau0. If the reference has several components, each follows this law
    /// with its own lifetime.
    bool ofEachComponent = false;
};

/// The law of a model for decay curves; empty if there is none.
struct DecayDescription {
    std::string_view formula;
    DecayLaw law = nullptr;
    Composition composition = Composition::None;
    bool yields = false; // events run after every curve of a fit, because a curve can take long
};

/// A simpler model to which the ratios of a model tend when one constant vanishes or grows without limit.
struct Limit {
    int model = 0; // 0: none
    Box constant = Box::K;
    bool vanishes = true; // false: the constant grows
    bool tested = false;  // an F test can tell whether the data need the constant
};

struct Model {
    std::string_view group;                                  // heading on the panel, shared with neighbouring models
    std::string_view name;                                   // in words
    std::array<Parameter, fit::kMaxParameters> parameters{}; // in fitting order
    RatioDescription ratio{};
    LifetimeDescription lifetime{};
    DecayDescription decay{};
    bool hasRadius = false; // the law implies an interaction radius
    /// The same law with its two sites exchanged: other parameters for the same curve of a probe with one lifetime;
    /// nullptr if there are no such sites.
    fit::Parameters (*exchanged)(const fit::Parameters&) = nullptr;
    std::array<Limit, 2> limits{};

    /// 0: no such model.
    constexpr int parameterCount() const
    {
        int count = 0;
        for (const Parameter& parameter : parameters)
            count += parameter.label.empty() ? 0 : 1;
        return count;
    }
    constexpr std::span<const Parameter> fitted() const
    {
        return {parameters.data(), static_cast<std::size_t>(parameterCount())};
    }
    /// The parameter of a box; nullptr if the model has none.
    constexpr const Parameter* typedInto(Box box) const
    {
        for (const Parameter& parameter : fitted())
            if (parameter.box == box)
                return &parameter;
        return nullptr;
    }
    constexpr bool uses(Box box) const { return typedInto(box) != nullptr; }
    constexpr bool hasDecayLaw() const { return decay.law != nullptr; }
    constexpr bool hasLifetimeLaw() const { return lifetime.law != nullptr; }
    /// The law contains the total probe concentration, because a complex or a sphere binds quencher. Decay laws of
    /// spheres use the total quencher instead.
    constexpr bool usesProbe(Analysis analysis) const
    {
        return uses(Box::K) && (analysis == Analysis::SternVolmer || !hasRadius);
    }
};

/// The row of a model; a number outside 1..13 gives an empty row.
const Model& row(int model);

/// The parameter in a slot 1.. of a model.
inline const Parameter& parameter(int model, std::size_t slot) { return row(model).fitted()[slot - 1]; }

/// The sum of Reported bits of a result, by model number; 0 in slot 0 and for models without a law for the analysis.
extern const std::array<int, kModelCount + 1> SVParamMask;
extern const std::array<int, kModelCount + 1> DecayParamMask;

/// The same for any number.
int reportedMask(int model, Analysis analysis);

/// How a model tends to a simpler one, directly or through others; nullptr if it does not. Through others the first
/// step is given.
const Limit* limitBetween(int model, int simpler);

/// The ratio F0/F of a model at total quencher Q, M; 0 if there is no model with this number.
double ratio(int model, double Q, const RatioArguments& arguments);

/// The same at many Q; ratio must have the size of Q.
void ratios(int model, std::span<const double> Q, const RatioArguments& arguments, std::span<double> ratio);

/// Ratios tau0/tau of mean lifetimes at many Q; lifetimeRatio must have the size of Q. The model must have a law for
/// lifetimes.
void lifetimeRatios(int model, std::span<const double> Q, const RatioArguments& arguments,
                    std::span<double> lifetimeRatio);

/// The populations of a model or of a decay code 14 or 15, which are the laws of Models 12 and 13 with sites that share
/// all components of the reference. None without a decay law.
Populations populationsOf(int model, const DecayArguments& arguments);

/// How these populations combine to a decay.
Composition compositionOf(int model);

} // namespace models
