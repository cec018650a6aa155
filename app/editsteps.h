#pragma once

#include <QObject>
#include <QString>

#include <functional>

class QLineEdit;

namespace app
{

/// Makes steps of what is entered into controls: a text when its box is left, anything else at once. A step has the
/// name of what was changed.
class EditSteps : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    void watch(QLineEdit& box, const QString& step);
    /// Announces the edit of a box that was not left yet.
    void finish();
    void announce(const QString& step);
    /// Makes one step of a function that fills controls.
    void fill(const QString& step, const std::function<void()>& controls);

signals:
    void stepMade(const QString& step);

private:
    QString m_edited;       // the step of the box that was edited and not left; empty: none
    bool m_filling = false; // no step in between
};

} // namespace app
