#pragma once

#include "noise/noisefit.h"
#include "trust/fitdetails.h"
#include "trust/startsearch.h"

#include <span>

namespace trust
{

/// The reason why a constant is unlikely in a real system.
enum class Doubt {
    None,
    AboveDiffusionLimit, // a collisional rate constant above models::kDiffusionLimit
    Negative,
    Undetermined,
};

/// How far the constant that reacts most moves when the probe concentration is ten times smaller.
struct ProbeEffect {
    std::size_t slot = 0;
    double standardErrors = 0;
};

/// The fit of one model: the end of the engine's run from the start values found, or the minimum if the engine leaves
/// it.
struct ComparedModel {
    int model = 0;
    bool fitted = false; // false: no law for the analysis, or it cannot be evaluated at any start tried
    bool engineStays = false;
    std::size_t solutionCount = 0;                       // equally good solutions, of which this is the first
    fit::Parameters start{};                             // values to type
    FitDetails details{};                                // of the fit from there
    std::array<Doubt, fit::kMaxParameters + 1> doubts{}; // by slot
    std::optional<ProbeEffect> probeEffect{};            // if it exceeds the standard error
    std::optional<noise::NoiseFit> assumed{};            // of ratios: the fit under the assumption, which has the AICc
    std::optional<double> differenceToFirst{};           // of AICc
    int sameCurveAs = 0;                                 // a model in a better place; 0: none

    bool isDetermined() const { return details.judgement.undetermined.empty(); }
    /// With as many constants as samples, a curve meets them all and tells nothing of its constants.
    bool hasFreedom() const { return details.uncertainty.degreesOfFreedom > 0; }
    bool mayLead() const { return fitted && isDetermined() && hasFreedom(); }
    std::optional<double> AICc() const { return assumed ? assumed->AICc : std::nullopt; }
    bool isScored() const { return fitted && AICc().has_value(); }
};

/// Whether the data need a constant that a model has more than a simpler one.
struct NestedTest {
    int model = 0, simpler = 0;
    models::Box constant = models::Box::K;
    double probability = 0; // of so much better a fit by chance
};

struct Comparison {
    models::Analysis analysis = models::Analysis::SternVolmer;
    noise::Errors errors{};              // what is assumed; of ratios only
    std::vector<ComparedModel> places{}; // best first; empty if cancelled
    std::vector<NestedTest> tests{};     // of ratios only
    double Cp = 0;                       // total probe, M
    int samples = 0;                     // without the reference
    int samplesBelowProbe = 0;           // with quencher, but less than probe
};

/// Fits every request from the start values found for it. Fixed parameters keep their typed values. The first places
/// have the models with an AICc, by AICc; then come the others, by their sums of squares; last those that cannot be
/// fitted. Each time, models that may not lead come after the others. Decay curves are
/// computed from typed lifetimes, so that the points of their grid are no observations: their models have no AICc.
/// requests: the same data with different models. known: learns from the searches. errors: the assumption under which
/// AICc and F tests compare ratios; it must have no complaint.
Comparison compareModels(std::span<const analysis::Request> requests, const noise::Errors& errors, LeastSums& known,
                         const SearchProgress& progress = {});

} // namespace trust
