#pragma once

#include "sternvolmer/ratiopoints.h"

#include <algorithm>
#include <vector>

namespace support
{

/// Published ratios for one quencher and one lifetime.
struct PublishedRatios {
    std::vector<double> Q;     // M
    std::vector<double> ratio; // F0/F
    double tau0;               // s
    const char* Cp;            // M, as typed
};

// Acridone quenched by iodide in water, 26 C; photochemistry workshop, github.com/chemfd/PhotochemistryWorkshopAnswers,
// 04-workshopweek4.Rmd (CC0). Published: (1 + 1.19 x) (1 + 4.94e9 tau0 x). Probe concentration assumed.
inline PublishedRatios acridoneRatios()
{
    PublishedRatios set{{0, 0.04, 0.1, 0.2, 0.3, 0.5, 0.8}, {}, 17.6e-9, "50e-6"};
    for (double intensity : {16580, 3753, 1566, 721, 446, 242, 121})
        set.ratio.push_back(16580 / intensity);
    return set;
}

// Tryptophan of hFis1 without its N-terminal arm, quenched by acrylamide, 341 nm; github.com/Hill-Lab/
// Fis1_structural_studies_N-term_arm, 20200220_TRP_dN_nativeN_acrylamide_D1. Published: KSV = 4.86781 per M. The
// lifetime is nominal, because the source gives none.
inline PublishedRatios hFis1Ratios()
{
    return {{0, 0.05, 0.1, 0.2, 0.3, 0.4, 0.5}, {1, 1.1789, 1.4212, 1.821, 2.444, 3.0051, 3.4779}, 3e-9, "10e-6"};
}

/// The simulated intensities of the manual's example of two sites: F = 0.6 and 5e9 M^-1 s^-1, rounded to four digits.
inline PublishedRatios twoSiteRatios()
{
    PublishedRatios set{{0, 0.05, 0.1, 0.2, 0.3, 0.4, 0.5}, {}, 3e-9, "50e-6"};
    for (double intensity : {1000.0, 732.1, 625.0, 531.2, 488.6, 464.3, 448.5})
        set.ratio.push_back(1000 / intensity);
    return set;
}

/// Ratios with one lifetime, s, as an analysis takes them.
inline sternvolmer::RatioPoints ratioPoints(const std::vector<double>& Q, const std::vector<double>& ratio, double tau0)
{
    sternvolmer::RatioPoints points{.count = static_cast<int>(Q.size()), .tau0 = tau0};
    std::copy(Q.begin(), Q.end(), points.Q.begin() + 1);
    std::copy(ratio.begin(), ratio.end(), points.ratio.begin() + 1);
    return points;
}

inline sternvolmer::RatioPoints ratioPoints(const PublishedRatios& set)
{
    return ratioPoints(set.Q, set.ratio, set.tau0);
}

} // namespace support
