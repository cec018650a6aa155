#pragma once

#include "trust/errortext.h"
#include "trust/fitdetails.h"
#include "trust/titledrows.h"

#include "models/catalogue.h"

namespace trust
{

/// The model and the data of a fit.
struct FitLabels {
    models::Analysis analysis = models::Analysis::SternVolmer;
    int model = 0;
    std::vector<double> Q{}, observed{}; // Q, M, and F0/F of each sample; empty for decay curves
    int sampleCount = 0;                 // with the reference
    double gridStep = 0;                 // of decay curves, as a multiple of tau0
};
FitLabels labelsOf(const analysis::Request& request);

/// Fit details in words and tables.
struct DetailsText {
    std::string heading;     // "Stern-Volmer Analysis, Model 3"
    std::string verdict;     // one of the verdict's phrases
    std::string remarks;     // sentences, may be empty
    TitledRows constants;    // name, value, standard error and 95 % interval or "fixed"
    TitledRows figures;      // name, value
    TitledRows correlations; // names along both sides; empty with fewer than two free constants
    TitledRows residuals;    // Q, observed, model, residual; empty for decay curves, which have hundreds
    ErrorText errors;        // empty for decay curves
};

/// Errors and figures based on them are omitted for decay curves, which are computed from typed lifetimes and carry no
/// noise. number: how tables print numbers.
DetailsText detailsText(const FitDetails& details, const FitLabels& labels, NumberText number = figure);

/// All tables that have rows, page by page.
std::vector<const TitledRows*> tablesOf(const DetailsText& text);

/// The whole text for the clipboard.
std::string plainText(const DetailsText& text);

} // namespace trust
