#include "app/helpviewer.h"

#include "ui/closing.h"
#include "ui/textbox.h"
#include "ui/twips.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace app
{

namespace
{
constexpr auto kHelpFile = "VORLOG4HELP.HLP";
constexpr int kWidthTwips = 10500;
constexpr int kHeightTwips = 9000;
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

HelpViewer::HelpViewer(QWidget* parent)
    : QWidget(parent, Qt::Window), m_text(new QTextBrowser(this)), m_find(new ui::TextBox(this))
{
    setWindowTitle(tr("Vorlo Help"));
    m_text->setObjectName("txtHelp");
    m_text->setAccessibleName(tr("Help text"));
    m_text->setOpenExternalLinks(true);
    m_find->setObjectName("txtFind");
    layOut();
    connect(m_find, &QLineEdit::returnPressed, this, &HelpViewer::findNext);
    new QShortcut(QKeySequence::Find, this, m_find, qOverload<>(&QWidget::setFocus));
    ui::closeOnEscape(*this);
    new QShortcut(Qt::Key_F3, this, this, &HelpViewer::findNext);
    resize(ui::toPixels(kWidthTwips), ui::toPixels(kHeightTwips));
}

void HelpViewer::layOut()
{
    auto* contents = new QPushButton(tr("&Contents"), this);
    contents->setObjectName("cmdContents");
    connect(contents, &QPushButton::clicked, this, [this] { m_text->scrollToAnchor("index"); });
    auto* back = new QPushButton(tr("&Back"), this);
    back->setObjectName("cmdHelpBack");
    back->setEnabled(false);
    connect(back, &QPushButton::clicked, m_text, &QTextBrowser::backward);
    connect(m_text, &QTextBrowser::backwardAvailable, back, &QWidget::setEnabled);
    auto* label = new QLabel(tr("&Find"), this);
    label->setBuddy(m_find);

    auto* bar = new QHBoxLayout;
    bar->setContentsMargins(4, 4, 4, 0);
    bar->addWidget(contents);
    bar->addWidget(back);
    bar->addStretch();
    bar->addWidget(label);
    bar->addWidget(m_find);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(bar);
    layout->addWidget(m_text);
    setTabOrder(contents, back);
    setTabOrder(back, m_find);
    setTabOrder(m_find, m_text);
    m_text->setFocus();
}

// After the last match the search starts again at the top.
void HelpViewer::findNext()
{
    if (m_text->find(m_find->text()))
        return;
    m_text->moveCursor(QTextCursor::Start);
    m_text->find(m_find->text());
}

void HelpViewer::openIndex(const QString& path)
{
    if (QFileInfo(path).isReadable())
        m_text->setSource(QUrl::fromLocalFile(path), QTextDocument::HtmlResource);
    else
        m_text->setPlainText(tr("The help file cannot be found:\n%1").arg(path));
}

} // namespace app
