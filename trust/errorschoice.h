#pragma once

#include "noise/assumption.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace trust
{

/// The choice of what is assumed about errors: a list, and for typed errors their box and whether they are known.
class ErrorsChoice : public QWidget
{
    Q_OBJECT

public:
    explicit ErrorsChoice(QWidget* parent = nullptr);

    noise::Errors errors() const;
    void setErrors(const noise::Errors& errors);

signals:
    void errorsChanged(const noise::Errors& errors);

private:
    void layOut();
    void showTyped();
    void announce();

    QComboBox* m_list;
    QLabel* m_caption;
    QLineEdit* m_typed;
    QCheckBox* m_known;
    noise::Errors m_announced;
};

} // namespace trust
