#include "app/statusline.h"

#include <QHBoxLayout>
#include <QStyle>

namespace app
{

StatusLine::StatusLine(QWidget* parent)
    : QWidget(parent), m_samples(new ui::ElidedLabel(this)), m_verdict(new ui::ElidedButton(this))
{
    m_samples->setObjectName("lblSamples");
    m_samples->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // the verdict takes the room that it needs
    m_verdict->setObjectName("cmdVerdict");
    m_verdict->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed); // a long verdict must not widen the window
    m_verdict->setAutoDefault(true);                                    // Enter presses it, too
    m_verdict->setEnabled(false);
    m_verdict->showText(tr("no analysis yet"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_samples, 1);
    layout->addWidget(m_verdict);
    connect(m_verdict, &QPushButton::clicked, this, &StatusLine::verdictPressed);
}

void StatusLine::showSamples(const QString& text)
{
    m_samples->showText(text);
    m_samples->setMinimumWidth(m_samples->minimumSizeHint().width()); // stays beside a long verdict
}

void StatusLine::showVerdict(const QString& text, const QString& opens, bool warns)
{
    m_verdict->setEnabled(true);
    m_verdict->setIcon(warns ? style()->standardIcon(QStyle::SP_MessageBoxWarning) : QIcon());
    m_verdict->showText(text);
    m_verdict->setToolTip(text + '\n' + opens);
    m_verdict->setAccessibleDescription(opens);
}

} // namespace app
