#pragma once

#include "trust/errortext.h"

#include <QWidget>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace trust
{

/// Constants ready to print, and boxes for the errors of the typed values that enter them.
class PrintPage : public QWidget
{
    Q_OBJECT

public:
    explicit PrintPage(QWidget* parent = nullptr);

    void showErrors(const ErrorText& text);
    void setTyped(const noise::TypedErrors& typed);

signals:
    void typedErrorsChanged(const noise::TypedErrors& typed);

private:
    void layOut();
    void announce();

    std::array<QLineEdit*, 3> m_typed; // of τ0, s and Cp
    std::array<QLabel*, 3> m_captions{};
    QLabel* m_meaning;
    QTableWidget* m_ready;
    QPushButton* m_copy;
    noise::TypedErrors m_announced;
    std::string m_sentence;
};

} // namespace trust
