#pragma once

#include <QWidget>

class QLineEdit;
class QTextBrowser;

namespace app
{

/// Path of the help file in the program's folder. If file names ignore case, the folder is in lower case.
QString helpFilePath(const QString& folder, QChar separator, bool caseIgnored);

/// The same for this program on this platform.
QString helpFilePath();

/// Shows the help file, an HTML text, and finds words in it.
class HelpViewer : public QWidget
{
    Q_OBJECT

public:
    explicit HelpViewer(QWidget* parent = nullptr);

    /// Opens a help file at its index page, or says that it is missing.
    void openIndex(const QString& path);

private:
    void layOut();
    void findNext();

    QTextBrowser* m_text;
    QLineEdit* m_find;
};

} // namespace app
