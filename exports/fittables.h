#pragma once

#include "analysis/request.h"
#include "exports/csvtext.h"

/// The data of an analysis with the values of the model, at full precision, with titles in the first row.
namespace exports
{

/// The model's curve with the measured values. Ratios: samples, and the model at even steps between them. Decay
/// curves: one row for each sample and time that the fit counts.
Rows curveRows(const analysis::Request& request, const analysis::Result& result);

/// Measured values, model and what the model leaves: measured minus model.
Rows residualRows(const analysis::Request& request, const analysis::Result& result);

/// Mean lifetime without quencher, s.
double lifetimeWithoutQuencher(const analysis::Request& request);

} // namespace exports
