#pragma once

#include "trust/errortext.h"

#include <QWidget>

class QTableWidget;

namespace trust
{

class ProfilePlot;

/// The fit under the assumption: its constants with their intervals, its figures, and the profile of the constant whose
/// row is chosen.
class ProfilePage : public QWidget
{
    Q_OBJECT

public:
    explicit ProfilePage(QWidget* parent = nullptr);

    void showErrors(const ErrorDetails& details, const ErrorText& text);

private:
    void drawProfile(int row);

    QTableWidget *m_constants, *m_figures;
    ProfilePlot* m_plot;
    ErrorDetails m_details;
    ErrorText m_text;
};

} // namespace trust
