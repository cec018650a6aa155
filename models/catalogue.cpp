#include "models/catalogue.h"

#include <algorithm>

namespace models
{
namespace
{

constexpr std::string_view kDynamic = "Dynamic Quenching";
constexpr std::string_view kOneStep = "1-step Quenching";
constexpr std::string_view kMultiStep = "Multi-step Quenching";
constexpr std::string_view kTwoSites = "Dynamic Quenching(2 site)";

constexpr Sizes kConstants{1e-2, 1e6};
constexpr Sizes kPopulations{1e-3, 1e3};
constexpr Sizes kRates{1e5, 1e13};

constexpr Parameter kComplex{
    Box::K, "K :", KorF, kPerMolar, "association constant of the complex of probe and quencher", kConstants};
constexpr Parameter kSphere{Box::K,    "K :", KorF, kPerMolar, "molar volume of the sphere of action around a probe",
                            kConstants};
constexpr Parameter kNeighbours{.box = Box::K,
                                .label = "K :",
                                .reported = KorF,
                                .unit = kPerMolar,
                                .meaning = "mean number of quenchers beside a probe, per molar quencher",
                                .usual = kConstants,
                                .jumpsInDecay = true};
constexpr Parameter kBeside{
    Box::kq1, "kq1 :", Kq1, kPerSecond, "rate constant of quenching by a quencher beside the probe", kRates};
constexpr Parameter kCollisions{Box::kq2, "kq2 :", Kq2, kPerMolarSecond, "collisional rate constant", kRates};
constexpr Parameter kSecondPopulation{
    Box::F, "F :", KorF, "", "population of the second site relative to the first", kPopulations};
// Two-site models show the constants of the sites as kq1 and kq2 in panel and report, but as kq2 and kq22 in results.
constexpr Parameter kFirstSite{Box::kq1, "kq1 :", Kq2, kPerMolarSecond, "collisional rate constant of the first site",
                               kRates};
constexpr Parameter kSecondSite{
    Box::kq2, "kq2 :", Kq22, kPerMolarSecond, "collisional rate constant of the second site", kRates};

constexpr Parameter freeInDecay(Parameter parameter)
{
    parameter.fixableInDecay = false;
    return parameter;
}

constexpr Parameter neverRestored(Parameter parameter)
{
    parameter.restored = false;
    return parameter;
}

constexpr Limit without(Box constant, int model) { return {model, constant, true, false}; }
constexpr Limit testedWithout(Box constant, int model) { return {model, constant, true, true}; }
constexpr Limit growing(Box constant, int model) { return {model, constant, false, false}; }

using P = fit::Parameters;
using D = DecayArguments;

constexpr DecayLaw kTwoSiteDecay = [](const D& v) { return twoSiteDecay(v.Q, v.p[1], v.p[2], v.p[3]); };
constexpr DecayLaw kOneOfTwoSitesDecay = [](const D& v) { return oneOfTwoSitesDecay(v.Q, v.p[1], v.p[2]); };

// Models that only collide: the mean lifetime is in proportion to the intensity.
constexpr RatioLaw kDynamicRatio = everywhere<[](const Mixture& mix, const P& p) { return dynamicRatio(mix, p[1]); }>;
constexpr RatioLaw kTwoSiteRatio =
    everywhere<[](const Mixture& mix, const P& p) { return twoSiteRatio(mix, p[1], p[2], p[3]); }>;
constexpr RatioLaw kOneOfTwoSitesRatio =
    everywhere<[](const Mixture& mix, const P& p) { return oneOfTwoSitesRatio(mix, p[1], p[2]); }>;
constexpr std::string_view kLikeIntensities = "τ0/τ = Φ0/Φ";

constexpr LifetimeDescription kSameLifetime{
    "τ0/τ = 1", everywhere<[](const Mixture&, const P&) { return unchangedLifetime(); }>, true};

// Row number = model number.
constexpr std::array<Model, kModelCount + 1> kModels{{
    {},
    {.group = kDynamic,
     .name = "collisions",
     .parameters = {kCollisions},
     .ratio = {"Φ0/Φ = 1 + kq2·τ0·Q", kDynamicRatio},
     .lifetime = {"τ0/τ = 1 + kq2·τ0·Q", kDynamicRatio, true},
     .decay = {"I(t) = S(kq2·Q)", [](const D& v) { return dynamicDecay(v.Q, v.p[1]); }, Composition::Shared}},
    {.group = kOneStep,
     .name = "a complex that decays faster, and collisions",
     .parameters = {kComplex, kBeside, freeInDecay(kCollisions)},
     .ratio =
         {"Φ0/Φ = (1 + kq2·τ0·Qf)·(1 + K·Qf) / (1 + K·Qf·(1 + kq2·τ0·Qf)/(1 + kq1·τ0))",
          everywhere<[](const Mixture& mix, const P& p) { return complexAndDynamicRatio(mix, p[1], p[2], p[3]); }>},
     .decay = {"I(t) = (S(kq2·Qf) + K·Qf·S(kq1)) / (1 + K·Qf)",
               [](const D& v) {
                   return complexAndDynamicDecay({v.Q, v.Cp}, v.p[1], v.p[2], v.p[3]);
               },
               Composition::Shared},
     .limits = {growing(Box::kq1, 3), without(Box::kq2, 4)}},
    {.group = kOneStep,
     .name = "a dark complex, and collisions",
     .parameters = {kComplex, neverRestored(kCollisions)},
     .ratio = {"Φ0/Φ = (1 + kq2·τ0·Qf)·(1 + K·Qf)",
               everywhere<[](const Mixture& mix, const P& p) { return darkComplexAndDynamicRatio(mix, p[1], p[2]); }>},
     .lifetime = {"τ0/τ = 1 + kq2·τ0·Qf",
                  everywhere<[](const Mixture& mix, const P& p) { return darkComplexLifetimeRatio(mix, p[1], p[2]); }>,
                  true},
     .decay = {"I(t) = S(kq2·Qf)",
               [](const D& v) {
                   return darkComplexDecay({v.Q, v.Cp}, v.p[1], v.p[2]);
               },
               Composition::Shared},
     .limits = {testedWithout(Box::K, 1), testedWithout(Box::kq2, 5)}},
    {.group = kOneStep,
     .name = "a complex that decays faster",
     .parameters = {kComplex, kBeside},
     .ratio = {"Φ0/Φ = (1 + K·Qf) / (1 + K·Qf/(1 + kq1·τ0))",
               everywhere<[](const Mixture& mix, const P& p) { return complexRatio(mix, p[1], p[2]); }>},
     .decay = {"I(t) = (S(0) + K·Qf·S(kq1)) / (1 + K·Qf)",
               [](const D& v) {
                   return complexDecay({v.Q, v.Cp}, v.p[1], v.p[2]);
               },
               Composition::Shared},
     .limits = {growing(Box::kq1, 5)}},
    {.group = kOneStep,
     .name = "a dark complex",
     .parameters = {kComplex},
     .ratio = {"Φ0/Φ = 1 + K·Qf",
               everywhere<[](const Mixture& mix, const P& p) { return darkComplexRatio(mix, p[1]); }>},
     .lifetime = kSameLifetime},
    {.group = kMultiStep,
     .name = "a sphere in which the probe decays faster, and collisions",
     .parameters = {kSphere, kBeside, freeInDecay(kCollisions)},
     .ratio = {"Φ0/Φ = (D + kq2·τ0·Q)·(1 + kq1·τ0) / (D + kq2·τ0·Q + (D·kq1 − kq2·Q)·τ0·E)",
               everywhere<[](const Mixture& mix, const P& p) { return sphereAndDynamicRatio(mix, p[1], p[2], p[3]); }>},
     .decay = {"I(t) = p0·S(kq2·p0·Q) + (1 − p0)·S(kq1)",
               [](const D& v) { return sphereAndDynamicDecay(v.Q, v.p[1], v.p[2], v.p[3]); }, Composition::Shared},
     .hasRadius = true,
     .limits = {growing(Box::kq1, 7), without(Box::kq2, 8)}},
    {.group = kMultiStep,
     .name = "a dark sphere, and collisions",
     .parameters = {kSphere, kCollisions},
     .ratio = {"Φ0/Φ = (1 + kq2·τ0·Q/D)·exp(K·Q/D)",
               everywhere<[](const Mixture& mix, const P& p) { return darkSphereAndDynamicRatio(mix, p[1], p[2]); }>},
     .lifetime = {"τ0/τ = 1 + kq2·τ0·Q/D",
                  everywhere<[](const Mixture& mix, const P& p) { return darkSphereLifetimeRatio(mix, p[1], p[2]); }>,
                  true},
     .decay = {"I(t) = S(kq2·p0·Q)", [](const D& v) { return darkSphereDecay(v.Q, v.p[1], v.p[2]); },
               Composition::Shared},
     .hasRadius = true,
     .limits = {testedWithout(Box::K, 1), testedWithout(Box::kq2, 9)}},
    {.group = kMultiStep,
     .name = "a sphere in which the probe decays faster",
     .parameters = {kSphere, kBeside},
     .ratio = {"Φ0/Φ = (1 + kq1·τ0) / (1 + kq1·τ0·E)",
               everywhere<[](const Mixture& mix, const P& p) { return sphereRatio(mix, p[1], p[2]); }>},
     .decay = {"I(t) = p0·S(0) + (1 − p0)·S(kq1)", [](const D& v) { return sphereDecay(v.Q, v.p[1], v.p[2]); },
               Composition::Shared},
     .hasRadius = true,
     .limits = {growing(Box::kq1, 9)}},
    {.group = kMultiStep,
     .name = "a dark sphere",
     .parameters = {kSphere},
     .ratio = {"Φ0/Φ = exp(K·Q/D)",
               everywhere<[](const Mixture& mix, const P& p) { return darkSphereRatio(mix, p[1]); }>},
     .lifetime = kSameLifetime,
     .hasRadius = true},
    {.group = kMultiStep,
     .name = "quenchers in Poisson numbers beside the probe, and collisions",
     .parameters = {kNeighbours, kBeside, freeInDecay(kCollisions)},
     .ratio =
         {"Φ0/Φ = (1 + kq2·τ0·Q/D) / (1 + kq2·τ0·Q·(1 − E)/D − kq1·τ0·K·Q/D)",
          everywhere<[](const Mixture& mix, const P& p) { return poissonAndDynamicRatio(mix, p[1], p[2], p[3]); }>},
     .decay = {"I(t) = p0·S(kq2·p0·Q) + p1·S(kq1) + p2·S(2·kq1) + …",
               [](const D& v) { return poissonAndDynamicDecay(v.Q, v.p[1], v.p[2], v.p[3], v.evaluation); },
               Composition::PoissonSeries, true},
     .hasRadius = true,
     .limits = {without(Box::K, 1), without(Box::kq2, 11)}},
    {.group = kMultiStep,
     .name = "quenchers in Poisson numbers beside the probe",
     .parameters = {kNeighbours, kBeside},
     .ratio = {"Φ0/Φ = 1 / (1 − kq1·τ0·K·Q/D)",
               everywhere<[](const Mixture& mix, const P& p) { return poissonRatio(mix, p[1], p[2]); }>},
     .decay = {"I(t) = p0·S(0) + p1·S(kq1) + p2·S(2·kq1) + …",
               [](const D& v) { return poissonDecay(v.Q, v.p[1], v.p[2], v.evaluation); }, Composition::PoissonSeries},
     .hasRadius = true},
    {.group = kTwoSites,
     .name = "two sites, each with collisions",
     .parameters = {kSecondPopulation, kFirstSite, kSecondSite},
     .ratio = {"Φ0/Φ = (1 + kq1·τ0·Q)·(1 + kq2·τ0·Q) / (1 + (F·kq1 + kq2)·τ0·Q/(1 + F))", kTwoSiteRatio},
     .lifetime = {kLikeIntensities, kTwoSiteRatio},
     .decay = {"I(t) = (exp(−(1/τ1 + kq1·Q)·t) + F·exp(−(1/τ2 + kq2·Q)·t)) / (1 + F)", kTwoSiteDecay,
               Composition::Sites},
     .exchanged = [](const fit::Parameters& p) -> fit::Parameters {
         return {0, 1 / p[1], p[3], p[2]};
     },
     .limits = {without(Box::kq2, 13)}},
    {.group = kTwoSites,
     .name = "two sites, the second out of reach",
     .parameters = {kSecondPopulation, kFirstSite},
     .ratio = {"Φ0/Φ = (1 + kq1·τ0·Q) / (1 + F·kq1·τ0·Q/(1 + F))", kOneOfTwoSitesRatio},
     .lifetime = {kLikeIntensities, kOneOfTwoSitesRatio},
     .decay = {"I(t) = (exp(−(1/τ1 + kq1·Q)·t) + F·exp(−t/τ2)) / (1 + F)", kOneOfTwoSitesDecay, Composition::Sites},
     .limits = {testedWithout(Box::F, 1)}},
}};

// Decay codes 14 and 15: Models 12 and 13 with all components in both sites. The codes are fixed names; no option
// selects them.
constexpr std::array<DecayDescription, 2> kCodes14And15{{
    {"", kTwoSiteDecay, Composition::Shared},
    {"", kOneOfTwoSitesDecay, Composition::Shared},
}};

constexpr std::array<int, kModelCount + 1> reportedMasks(Analysis analysis)
{
    std::array<int, kModelCount + 1> masks{};
    for (std::size_t model = 1; model < kModels.size(); ++model) {
        const Model& described = kModels[model];
        if (analysis == Analysis::Decay && !described.hasDecayLaw())
            continue;
        masks[model] = described.hasRadius ? Radius : 0;
        for (const Parameter& parameter : described.fitted())
            masks[model] |= parameter.reported;
    }
    return masks;
}
static_assert(reportedMasks(Analysis::SternVolmer) == std::array{0, 4, 7, 5, 3, 1, 23, 21, 19, 17, 23, 19, 13, 5});
static_assert(reportedMasks(Analysis::Decay) == std::array{0, 4, 7, 5, 3, 0, 23, 21, 19, 0, 23, 19, 13, 5});

/// The number itself, or 0 if there is no such model.
std::size_t index(int model) { return model >= 1 && model <= kModelCount ? static_cast<std::size_t>(model) : 0; }

const DecayDescription& decayOf(int model)
{
    const int code = model - kModelCount - 1;
    if (code >= 0 && code < static_cast<int>(kCodes14And15.size()))
        return kCodes14And15[static_cast<std::size_t>(code)];
    return row(model).decay;
}

} // namespace

constexpr std::array<int, kModelCount + 1> SVParamMask = reportedMasks(Analysis::SternVolmer);
constexpr std::array<int, kModelCount + 1> DecayParamMask = reportedMasks(Analysis::Decay);

std::string Parameter::caption() const { return name() + (unit.empty() ? "" : " /") + std::string(unit); }

const Model& row(int model) { return kModels[index(model)]; }

int reportedMask(int model, Analysis analysis)
{
    return analysis == Analysis::Decay ? DecayParamMask[index(model)] : SVParamMask[index(model)];
}

const Limit* limitBetween(int model, int simpler)
{
    for (const Limit& limit : row(model).limits)
        if (limit.model != 0 && (limit.model == simpler || limitBetween(limit.model, simpler)))
            return &limit;
    return nullptr;
}

double ratio(int model, double Q, const RatioArguments& arguments)
{
    double result = 0;
    ratios(model, {&Q, 1}, arguments, {&result, 1});
    return result;
}

void ratios(int model, std::span<const double> Q, const RatioArguments& arguments, std::span<double> ratio)
{
    if (const RatioLaw law = row(model).ratio.law)
        law(Q, arguments, ratio.data());
    else
        std::fill(ratio.begin(), ratio.end(), 0.0);
}

void lifetimeRatios(int model, std::span<const double> Q, const RatioArguments& arguments,
                    std::span<double> lifetimeRatio)
{
    row(model).lifetime.law(Q, arguments, lifetimeRatio.data());
}

Populations populationsOf(int model, const DecayArguments& arguments)
{
    const DecayLaw law = decayOf(model).law;
    return law == nullptr ? Populations{} : law(arguments);
}

Composition compositionOf(int model) { return decayOf(model).composition; }

} // namespace models
