#include "app/statusline.h"

#include "ui/elided.h"

#include <QHBoxLayout>

namespace app
{

StatusLine::StatusLine(QWidget* parent) : QWidget(parent), m_samples(new ui::ElidedLabel(this))
{
    m_samples->setObjectName("lblSamples");
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_samples, 1);
}

void StatusLine::showSamples(const QString& text) { m_samples->showText(text); }

} // namespace app
