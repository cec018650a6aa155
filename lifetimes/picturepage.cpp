#include "lifetimes/picturepage.h"

#include "lifetimes/picture.h"
#include "trust/seriesplot.h"

#include <QCheckBox>
#include <QVBoxLayout>

namespace lifetimes
{
namespace
{

// Each has a contrast of at least 3 with white and with dark grounds.
constexpr QColor kIntensities(255, 0, 0), kLifetimes(40, 130, 220), kByIntensity(0, 145, 70);

QVector<QPointF> qtPoints(const std::vector<PicturePoint>& points)
{
    QVector<QPointF> found;
    for (const auto& [Q, value] : points)
        found << QPointF(Q, value);
    return found;
}

/// Leaves out empty series, which would only fill the legend.
void add(QVector<trust::Series>& all, const std::vector<PicturePoint>& points, const QColor& color, trust::Mark mark,
         const QString& name = {})
{
    if (!points.empty())
        all.append({.points = qtPoints(points), .color = color, .mark = mark, .name = name});
}

} // namespace

PicturePage::PicturePage(QWidget* parent)
    : QWidget(parent),
      m_ratios(new trust::SeriesPlot("picRatios", "Φ0/Φ, τ0/τ", trust::SeriesPlot::Range::FromZero, this)),
      m_residuals(new trust::SeriesPlot("picTogether", tr("Residual /%"), trust::SeriesPlot::Range::AroundZero, this)),
      m_byIntensity(new QCheckBox(tr("Show the mean &weighted by intensity, too"), this))
{
    m_ratios->setAccessibleName(tr("Plot of both ratios; the list of samples holds the same numbers"));
    m_residuals->setAccessibleName(tr("Plot of the residuals; their list holds the same numbers"));
    m_byIntensity->setObjectName("chkByIntensity");
    trust::SeriesPlot::alignColumns(*m_ratios, *m_residuals);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_ratios, 2);
    layout->addWidget(m_residuals, 1);
    layout->addWidget(m_byIntensity);
    connect(m_byIntensity, &QCheckBox::toggled, this, &PicturePage::draw);
}

void PicturePage::showFit(const Measurements& measurements, const CombinedFit* fit)
{
    m_measurements = measurements;
    m_fit = fit ? std::optional(*fit) : std::nullopt;
    draw();
}

void PicturePage::draw()
{
    using enum trust::Mark;
    const CombinedFit* fit = m_fit ? &*m_fit : nullptr;
    const PictureSeries intensities = pictureOf(m_measurements, Kind::Intensity, fit);
    const PictureSeries lifetimes = pictureOf(m_measurements, Kind::Lifetime, fit);
    const auto line = [&](const char* ratio) { return fit ? tr("%1 of Model %2").arg(ratio).arg(fit->model) : ""; };
    QVector<trust::Series> ratios, residuals;
    add(ratios, intensities.ratios, kIntensities, Disc, "Φ0/Φ");
    add(ratios, lifetimes.ratios, kLifetimes, Square, "τ0/τ");
    add(ratios, intensities.line, kIntensities, Line, line("Φ0/Φ"));
    add(ratios, lifetimes.line, kLifetimes, DashedLine, line("τ0/τ"));
    if (m_byIntensity->isChecked())
        add(ratios, lifetimes.ratiosByIntensity, kByIntensity, Diamond, tr("τ0/τ weighted by intensity"));
    add(residuals, intensities.residuals, kIntensities, Disc, "ln Φ");
    add(residuals, lifetimes.residuals, kLifetimes, Square, "ln τ");
    m_ratios->setSeries(ratios);
    m_residuals->setSeries(residuals);
}

} // namespace lifetimes
