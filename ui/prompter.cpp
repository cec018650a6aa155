#include "ui/prompter.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMessageBox>
#include <QStandardPaths>

namespace ui
{
namespace
{

const QString kSessions = QStringLiteral("Vorlo File (*.vrl)");

QString tr(const char* text) { return QCoreApplication::translate("ui::DialogPrompter", text); }

int ask(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons)
{
    QMessageBox box(icon, QGuiApplication::applicationDisplayName(), text, buttons, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText); // a file name may look like markup
    if (buttons & QMessageBox::No)
        box.setDefaultButton(QMessageBox::No); // a hasty Enter loses nothing
    return box.exec();
}

/// The toolkit's list selects the folder of a typed path beside its file and would enter the folder; its list of
/// completions would take the click on the button that ends the dialog.
void takeTypedPaths(QFileDialog& dialog)
{
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    const auto* list = dialog.findChild<QAbstractItemView*>("listView");
    if (!name || !list) // a desktop's own dialog
        return;
    name->setCompleter(nullptr);
    QObject::connect(name, &QLineEdit::textChanged, list, [name, list] {
        if (name->text().contains('/'))
            list->selectionModel()->clearSelection();
    });
}

} // namespace

DialogPrompter::DialogPrompter() : m_folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

void DialogPrompter::message(const QString& text)
{
    QString lines = text;
    lines.replace("\r\n", "\n");
    ask(QMessageBox::NoIcon, lines, QMessageBox::Ok);
}

std::optional<QString> DialogPrompter::fileToOpen()
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setFileMode(QFileDialog::ExistingFile);
    return chosenFile(dialog, kSessions);
}

std::optional<QString> DialogPrompter::tableToOpen()
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setWindowTitle(tr("Import Table"));
    return chosenFile(dialog, tr("Tables (*.csv *.tsv *.txt *.dat *.asc);;All files (*)"));
}

std::optional<QString> DialogPrompter::fileToSave(const QString& proposal)
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("vrl");
    return chosenFile(dialog, kSessions, proposal);
}

std::optional<QString> DialogPrompter::tableToSave(const QString& proposal)
{
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix("csv");
    dialog.setWindowTitle(tr("Export"));
    return chosenFile(dialog, tr("Tables (*.csv)"), proposal);
}

std::optional<QString> DialogPrompter::folderForTables()
{
    const QString folder = QFileDialog::getExistingDirectory(QApplication::activeWindow(), tr("Export"), m_folder);
    if (folder.isEmpty())
        return std::nullopt;
    return m_folder = folder;
}

bool DialogPrompter::mayReplace(const QString& path)
{
    const QString question = tr("%1 already exists.\nDo you want to replace it?").arg(QFileInfo(path).fileName());
    return ask(QMessageBox::Warning, question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

bool DialogPrompter::mayReplaceAll(const QStringList& names)
{
    const QString question = tr("There are already %1.\nDo you want to replace them?").arg(names.join(", "));
    return ask(QMessageBox::Warning, question, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

std::optional<QString> DialogPrompter::chosenFile(QFileDialog& dialog, const QString& filter, const QString& proposal)
{
    dialog.setObjectName("CommonDialog1");
    takeTypedPaths(dialog);
    dialog.setNameFilter(filter);
    dialog.setDirectory(m_folder);
    if (!proposal.isEmpty())
        dialog.selectFile(proposal); // also enters its folder
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    const QString file = dialog.selectedFiles().constFirst();
    m_folder = QFileInfo(file).absolutePath();
    return file;
}

} // namespace ui
