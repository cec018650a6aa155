#pragma once

#include <QDialog>

namespace ui
{
class Prompter;
}

namespace app
{

/// Program and arguments of the first system-information tool found on this computer; empty if there is none.
QStringList systemInformationTool();

/// What the toolkit knows about the computer, one fact per line.
QString systemInformation();

/// The about box. It is modeless.
class frmVorloAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmVorloAbout(ui::Prompter& prompter, QWidget* parent = nullptr);

private:
    void showSystemInformation();

    ui::Prompter& m_prompter;
};

} // namespace app
