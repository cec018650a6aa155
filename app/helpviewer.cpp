#include "app/helpviewer.h"

#include "ui/twips.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace app
{

namespace
{
constexpr auto kHelpFile = "VORLOG4HELP.HLP";
constexpr int kWidthTwips = 9000;
constexpr int kHeightTwips = 8000;
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
constexpr bool kCaseIgnored = true;
#else
constexpr bool kCaseIgnored = false;
#endif
} // namespace

QString helpFilePath(const QString& folder, QChar separator, bool caseIgnored)
{
    QString path = caseIgnored ? folder.toLower() : folder;
    if (!path.endsWith(separator))
        path += separator;
    return path + kHelpFile;
}

QString helpFilePath()
{
    return helpFilePath(QDir::toNativeSeparators(QCoreApplication::applicationDirPath()), QDir::separator(),
                        kCaseIgnored);
}

HelpViewer::HelpViewer(QWidget* parent) : QWidget(parent, Qt::Window), m_text(new QTextBrowser(this))
{
    setWindowTitle(tr("Vorlo Help"));
    m_text->setObjectName("txtHelp");
    m_text->setAccessibleName(tr("Help text"));
    m_text->setOpenExternalLinks(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_text);
    resize(ui::toPixels(kWidthTwips), ui::toPixels(kHeightTwips));
}

void HelpViewer::openIndex(const QString& path)
{
    if (QFileInfo(path).isReadable())
        m_text->setSource(QUrl::fromLocalFile(path), QTextDocument::HtmlResource);
    else
        m_text->setPlainText(tr("The help file cannot be found:\n%1").arg(path));
}

} // namespace app
