#pragma once

#include "lifetimes/errorratio.h"

#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace lifetimes
{

/// How the errors of lifetimes and intensities compare: a typed ratio, or both errors estimated.
class ErrorRatioChoice : public QWidget
{
    Q_OBJECT

public:
    explicit ErrorRatioChoice(QWidget* parent = nullptr);

    ErrorRatio ratio() const;
    /// Offers to estimate both errors. A choice made before stays and can be taken back.
    void offerEstimates(bool possible);

signals:
    void ratioChanged(const ErrorRatio& ratio);

private:
    void announce();

    QLabel* m_caption;
    QLineEdit* m_typed;
    QCheckBox* m_eachEstimated;
    ErrorRatio m_announced;
};

} // namespace lifetimes
