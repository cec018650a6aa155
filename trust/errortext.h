#pragma once

#include "trust/errordetails.h"
#include "trust/judgement.h"
#include "trust/titledrows.h"

namespace trust
{

/// What follows from an assumption about errors, in words and tables.
struct ErrorText {
    std::string assumption{}; // one sentence; another one names constants that differ from those of the analysis
    TitledRows constants{};   // fitted under the assumption, with symmetrical and profile intervals
    TitledRows figures{};     // of this fit
    TitledRows leftOut{};     // constants without each sample, influence, outlyingness; empty with too few samples
    TitledRows ready{};       // constants ready to print, with the parts of their errors
    std::vector<double noise::TypedErrors::*> entering{}; // typed errors that can enter the constants of the model
    std::string meaning{};                                // of ±: "± standard error, without the errors of τ0 and s"
    std::string sentence{};                               // for a paper
};
/// judgement: of the analysis. program: its name and version. number: how tables print numbers.
ErrorText errorText(const ErrorDetails& details, const Judgement& judgement, const std::string& program,
                    NumberText number = figure);

/// "0.98 to 1.6", "< 3.1", "> 0.2", "any value".
std::string intervalText(const leastsquares::Profile& profile, NumberText number = figure);

} // namespace trust
