#pragma once

#include "imports/layout.h"

#include <QGroupBox>

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace app
{

/// How the text of a table is cut into cells: what was found, and what the user chooses instead.
class ImportTableBox : public QGroupBox
{
    Q_OBJECT

public:
    /// A choice of the user goes into `choices`, which must outlive the box.
    explicit ImportTableBox(imports::Choices& choices, QWidget* parent = nullptr);
    void show(const imports::FoundTable& table);
    /// Gives the keyboard to the decimal sign if it must be chosen, else to the first control.
    void takeFocus();

signals:
    void changed();

private:
    void nameControls();
    void layOut();
    void connectControls();
    void forgetColumns();

    imports::Choices& m_choices;
    QComboBox* m_separator;
    QComboBox* m_decimalSign;
    QLineEdit* m_comment;
    QComboBox* m_direction;
    QLabel* m_firstRowCaption;
    QSpinBox* m_firstRow;
};

} // namespace app
