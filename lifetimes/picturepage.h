#pragma once

#include "lifetimes/combinedfit.h"

#include <QWidget>

class QCheckBox;

namespace trust
{
class SeriesPlot;
}

namespace lifetimes
{

/// Φ0/Φ and τ0/τ against the quencher, with the lines of a model, and the residuals below.
class PicturePage : public QWidget
{
    Q_OBJECT

public:
    explicit PicturePage(QWidget* parent = nullptr);

    /// fit: nullptr draws the points only.
    void showFit(const Measurements& measurements, const CombinedFit* fit);

private:
    void draw();

    trust::SeriesPlot *m_ratios, *m_residuals;
    QCheckBox* m_byIntensity;
    Measurements m_measurements;
    std::optional<CombinedFit> m_fit;
};

} // namespace lifetimes
