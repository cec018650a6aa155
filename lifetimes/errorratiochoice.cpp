#include "lifetimes/errorratiochoice.h"

#include "fit/numbertext.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace lifetimes
{

ErrorRatioChoice::ErrorRatioChoice(QWidget* parent)
    : QWidget(parent), m_caption(new QLabel(tr("Error of a lifetime by error of an intensit&y:"), this)),
      m_typed(new QLineEdit("1", this)), m_eachEstimated(new QCheckBox(tr("e&ach estimated"), this))
{
    constexpr int kCharacters = 8;
    m_caption->setBuddy(m_typed);
    m_typed->setObjectName("txtErrorRatio");
    m_typed->setMaximumWidth(kCharacters * fontMetrics().averageCharWidth() + m_typed->minimumSizeHint().width());
    m_eachEstimated->setObjectName("chkEachEstimated");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_caption);
    layout->addWidget(m_typed);
    layout->addWidget(m_eachEstimated);
    layout->addStretch();
    offerEstimates(false);
    connect(m_typed, &QLineEdit::editingFinished, this, &ErrorRatioChoice::announce);
    connect(m_eachEstimated, &QCheckBox::toggled, this, [this](bool estimated) {
        m_caption->setEnabled(!estimated);
        m_typed->setEnabled(!estimated);
        announce();
    });
}

ErrorRatio ErrorRatioChoice::ratio() const
{
    return {fit::numberFrom(m_typed->text().toStdString()), m_eachEstimated->isChecked()};
}

void ErrorRatioChoice::offerEstimates(bool possible)
{
    m_eachEstimated->setEnabled(possible || m_eachEstimated->isChecked());
}

/// Once for each change: leaving the box also ends its editing.
void ErrorRatioChoice::announce()
{
    const ErrorRatio chosen = ratio();
    if (chosen == m_announced)
        return;
    m_announced = chosen;
    emit ratioChanged(chosen);
}

} // namespace lifetimes
