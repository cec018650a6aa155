#include "ui/prompter.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

namespace ui
{

DialogPrompter::DialogPrompter() : m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

void DialogPrompter::message(const QString& text)
{
    QString lines = text;
    lines.replace("\r\n", "\n");
    QMessageBox box(QMessageBox::NoIcon, QGuiApplication::applicationDisplayName(), lines, QMessageBox::Ok,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText); // a file name may look like markup
    box.exec();
}

std::optional<QString> DialogPrompter::fileToOpen()
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setFileMode(QFileDialog::ExistingFile);
    return chosenFile(dialog);
}

std::optional<QString> DialogPrompter::fileToSave()
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("vrl");
    return chosenFile(dialog);
}

std::optional<QString> DialogPrompter::chosenFile(QFileDialog& dialog)
{
    dialog.setNameFilter("Vorlo File (*.vrl)");
    dialog.setDirectory(m_folder);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString file = dialog.selectedFiles().constFirst();
    m_folder = QFileInfo(file).absolutePath();
    return file;
}

} // namespace ui
