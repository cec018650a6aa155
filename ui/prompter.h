#pragma once

#include <QStringList>

#include <optional>

class QFileDialog;

namespace ui
{

/// The interface for everything modal, so that tests can answer for the user.
class Prompter
{
public:
    virtual ~Prompter() = default;
    virtual void message(const QString& text) = 0;
    virtual std::optional<QString> fileToOpen() = 0;                        // nullopt: cancelled
    virtual std::optional<QString> tableToOpen() = 0;                       // of another program
    virtual std::optional<QString> fileToSave(const QString& proposal) = 0; // a path or empty; nullopt: cancelled
    virtual std::optional<QString> tableToSave(const QString& proposal) = 0;
    virtual std::optional<QString> folderForTables() = 0;
    virtual bool mayReplace(const QString& path) = 0;
    virtual bool mayReplaceAll(const QStringList& names) = 0;
};

/// Asks the user: message boxes and file dialogs above the active window.
class DialogPrompter final : public Prompter
{
public:
    DialogPrompter();
    void message(const QString& text) override;
    std::optional<QString> fileToOpen() override;
    std::optional<QString> tableToOpen() override;
    std::optional<QString> fileToSave(const QString& proposal) override;
    std::optional<QString> tableToSave(const QString& proposal) override;
    std::optional<QString> folderForTables() override;
    bool mayReplace(const QString& path) override;
    bool mayReplaceAll(const QStringList& names) override;

private:
    std::optional<QString> chosenFile(QFileDialog& dialog, const QString& filter, const QString& proposal = {});

    QString m_folder; // where the next file dialog starts
};

} // namespace ui
