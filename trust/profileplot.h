#pragma once

#include "trust/profilecurve.h"

#include <QWidget>

namespace trust
{

/// Plots the profile of a constant: the least sum of squares against its value, with a line at the sum where the 95 %
/// interval ends.
class ProfilePlot : public QWidget
{
    Q_OBJECT

public:
    explicit ProfilePlot(QWidget* parent = nullptr);

    /// fitted: the minimum. highest: the sum at the ends of the interval. name: of the constant, with its unit.
    void setProfile(const leastsquares::Profile& profile, const leastsquares::ProfilePoint& fitted, double highest,
                    const QString& name);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    ProfileCurve m_curve;
    bool m_endsBelow = false, m_endsAbove = false; // the interval is closed on this side
    leastsquares::ProfilePoint m_fitted;
    double m_highest = 0;
    QString m_name;
};

} // namespace trust
