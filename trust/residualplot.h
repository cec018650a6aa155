#pragma once

#include <QPointF>
#include <QVector>
#include <QWidget>

namespace trust
{

/// Plots residuals against concentration around a line at zero. The axes have numbers; colours and font are the
/// desktop's.
class ResidualPlot : public QWidget
{
    Q_OBJECT

public:
    explicit ResidualPlot(QWidget* parent = nullptr);
    void setPoints(const QVector<QPointF>& points);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVector<QPointF> m_points; // all finite
    double m_widest = 0;       // largest concentration, M
    double m_largest = 0;      // largest size of a residual
};

} // namespace trust
