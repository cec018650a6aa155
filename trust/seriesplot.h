#pragma once

#include <QColor>
#include <QPointF>
#include <QString>
#include <QVector>
#include <QWidget>

namespace trust
{

enum class Mark { Disc, Square, Diamond, Line, DashedLine };

struct Series {
    QVector<QPointF> points{}; // concentration in M, quantity
    QColor color = Qt::red;
    Mark mark = Mark::Disc;
    QString name{}; // in the legend; empty: not there
};

/// Plots a quantity against concentration as points and lines, with numbers at the axes and a legend. Ground, font and
/// axes are the desktop's.
class SeriesPlot : public QWidget
{
    Q_OBJECT

public:
    enum class Range { FromZero, AroundZero };

    SeriesPlot(const char* name, const QString& quantity, Range range, QWidget* parent = nullptr);

    /// Leaves out points that are not finite.
    void setSeries(const QVector<Series>& series);
    /// Gives both plots the same room for numbers and the same width of concentrations, so that one can stand below the
    /// other.
    static void alignColumns(SeriesPlot& above, SeriesPlot& below);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct LegendEntry {
        QRectF room;
        const Series* series;
    };
    int widestNumber() const;
    QVector<LegendEntry> legend() const;
    void drawLegend(QPainter& painter, const QVector<LegendEntry>& entries) const;

    const QString m_quantity;
    const Range m_range;
    QVector<Series> m_series;
    double m_widest = 0;  // largest concentration, M
    double m_largest = 0; // largest size of a value
    const SeriesPlot* m_neighbour = nullptr;
};

} // namespace trust
