#pragma once

#include <QPointF>
#include <QVector>
#include <QWidget>

namespace trust
{

/// Plots residuals against concentration around a line at zero.
class ResidualPlot : public QWidget
{
    Q_OBJECT

public:
    explicit ResidualPlot(QWidget* parent = nullptr);
    void setPoints(const QVector<QPointF>& points);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVector<QPointF> m_points;
};

} // namespace trust
