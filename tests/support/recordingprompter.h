#pragma once

#include "ui/prompter.h"

#include <QStringList>

#include <utility>

namespace support
{

/// Records messages to the user and answers each file dialog once. A dialog without an answer is cancelled.
struct RecordingPrompter final : ui::Prompter {
    QStringList shown;
    QStringList askedToReplace;
    bool replaces = false;
    std::optional<QString> nextFile;
    QString proposed; // by the last dialog for saving

    void message(const QString& text) override { shown << text; }
    std::optional<QString> fileToOpen() override { return std::exchange(nextFile, std::nullopt); }
    std::optional<QString> tableToOpen() override { return std::exchange(nextFile, std::nullopt); }
    std::optional<QString> fileToSave(const QString& name) override
    {
        proposed = name;
        return std::exchange(nextFile, std::nullopt);
    }
    std::optional<QString> tableToSave(const QString& name) override { return fileToSave(name); }
    std::optional<QString> folderForTables() override { return std::exchange(nextFile, std::nullopt); }
    bool mayReplace(const QString& path) override
    {
        askedToReplace << path;
        return replaces;
    }
    bool mayReplaceAll(const QStringList& names) override
    {
        askedToReplace << names;
        return replaces;
    }
};

} // namespace support
