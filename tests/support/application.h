#pragma once

#include "app/datasheet.h"
#include "app/resultstable.h"
#include "app/startup.h"
#include "tests/support/recordingprompter.h"

#include <QAction>
#include <QFile>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace support
{

using Column = QStringList; // rows 1, 2, ... of one sample in the data sheet

/// The whole program as a user sees it, with a recorder in place of message boxes and dialogs.
struct Application {
    RecordingPrompter prompter;
    app::VorloMain program{prompter};

    /// A control or menu item of the main window by its name.
    template <class Control>
    Control& control(const QString& name)
    {
        auto* found = program.MainWindow.findChild<Control*>(name);
        Q_ASSERT(found);
        return *found;
    }

    void fill(const QList<Column>& samples)
    {
        app::DataSheet& sheet = program.MainWindow.sheet();
        for (int column = 1; column <= samples.size(); ++column)
            for (int row = 1; row <= samples[column - 1].size(); ++row)
                sheet.SetSheetText(row, column, samples[column - 1][row - 1]);
    }
    void type(const QString& box, const QString& text) { control<QLineEdit>(box).setText(text); }
    void choose(int model) { control<QRadioButton>(QString("opnModel%1").arg(model)).click(); }
    void run(const char* menuItem) { control<QAction>(menuItem).trigger(); }
    void save(const QString& path)
    {
        prompter.nextFile = path;
        run("mnuSaveAs");
    }
    void open(const QString& path)
    {
        prompter.nextFile = path;
        run("mnuOpen");
    }
    QString result(int row, int column) { return program.MainWindow.results().GetResultText(row, column); }
    static QString reportOf(const QWidget& analyzer)
    {
        return analyzer.findChild<QPlainTextEdit*>("txtResults")->toPlainText();
    }
};

inline QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be opened");
}

} // namespace support
