#include "analysis/sternvolmeranalyzer.h"

#include <cassert>

namespace analysis
{
namespace
{

std::size_t slot(int i)
{
    assert(i >= 0 && i <= sternvolmer::kMostPoints);
    return static_cast<std::size_t>(i);
}

} // namespace

frmSternVolmerAnalyzer::frmSternVolmerAnalyzer(ui::Prompter& prompter) : AnalyzerWindow("SternVolmerAnalyzer", prompter)
{
}

void frmSternVolmerAnalyzer::setDatanumber(double n)
{
    points().count = static_cast<int>(n);
    m_dataReady = true;
}

void frmSternVolmerAnalyzer::setDX(double x, int i)
{
    if (m_dataReady)
        points().Q[slot(i)] = x;
}

void frmSternVolmerAnalyzer::setDY(double y, int i)
{
    if (m_dataReady)
        points().ratio[slot(i)] = y;
}

sternvolmer::RatioSlots frmSternVolmerAnalyzer::getFity() const
{
    const auto& measured = std::get<sternvolmer::RatioPoints>(request().data);
    const auto fitted = fittedRatio(request(), startParameters(request()));
    sternvolmer::RatioSlots ratios{};
    for (int i = 1; i <= measured.count; ++i)
        ratios[slot(i)] = fitted(measured.Q[slot(i)]);
    return ratios;
}

double frmSternVolmerAnalyzer::getfvalue(double x) const
{
    return fittedRatio(request(), startParameters(request()))(x);
}

} // namespace analysis
