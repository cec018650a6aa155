#include "app/editsteps.h"

#include <QLineEdit>
#include <QScopedValueRollback>

#include <utility>

namespace app
{

// Assistive technology changes a text without a key, so every change counts.
void EditSteps::watch(QLineEdit& box, const QString& step)
{
    connect(&box, &QLineEdit::textChanged, this, [this, step] {
        if (m_filling || step == m_edited)
            return;
        finish();
        m_edited = step;
    });
    connect(&box, &QLineEdit::editingFinished, this, &EditSteps::finish);
}

void EditSteps::finish()
{
    if (!m_edited.isEmpty())
        emit stepMade(std::exchange(m_edited, {}));
}

void EditSteps::announce(const QString& step)
{
    if (m_filling)
        return;
    finish();
    emit stepMade(step);
}

void EditSteps::fill(const QString& step, const std::function<void()>& controls)
{
    finish();
    {
        const QScopedValueRollback filling(m_filling, true);
        controls();
    }
    announce(step);
}

} // namespace app
