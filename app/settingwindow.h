#pragma once

#include <QDialog>

class QButtonGroup;
class QGroupBox;

namespace app
{

struct SettingChoice;
struct SharedState;

/// The "Output Settings" dialog: four pairs of options. A click stores the option at once.
class frmSettingWindow : public QDialog
{
    Q_OBJECT

public:
    explicit frmSettingWindow(SharedState& shared, QWidget* parent = nullptr);

    /// Places the window, all in twips, and shows it.
    void SetSize(int top, int left, int height, int width);

    /// Shows the current settings, for instance after a session file was opened.
    void showSettings();

signals:
    void changed(); // any setting
    void assessmentChanged();
    void aboutToChange();               // the user chooses an option
    void stepMade(const QString& step); // the title of its frame

protected:
    void showEvent(QShowEvent* event) override;

private:
    QGroupBox* makeFrame(const SettingChoice& choice);
    void choose(const SettingChoice& choice, int index);
    void cmdOK_Click();

    SharedState& m_shared;
    bool m_loaded = false; // shown at least once
};

} // namespace app
