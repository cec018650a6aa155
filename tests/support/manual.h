#pragma once

#include <QFile>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

namespace support
{

/// One step of a worked example: a table, or the report that the steps so far must give.
struct ManualStep {
    QString use;             // sheet, run, result, copied, readings, prepared or report, as the page marks it
    QList<QStringList> rows; // of a table: all cells of each row, the title first
    QString text;            // of a report
};

struct ManualExample {
    QString id;
    QList<ManualStep> steps;
};

/// The contents of the page. It must be well-formed XML, which QXmlStreamReader checks.
struct Manual {
    QList<ManualExample> examples;
    QString plainText; // white space as single blanks
    QStringList links; // to places on the page, without '#'
    QSet<QString> anchors;
    QStringList pictures;
    QString error;
};

/// Reads the page in document order.
class ManualReader
{
public:
    Manual read(const QString& path)
    {
        QFile file(path);
        file.open(QIODevice::ReadOnly); // an unreadable page is a page without a document element
        m_xml.setDevice(&file);
        while (!m_xml.atEnd()) {
            m_xml.readNext();
            if (m_xml.isStartElement())
                start();
            else if (m_xml.isCharacters())
                m_manual.plainText += m_xml.text();
        }
        m_manual.plainText = m_manual.plainText.simplified();
        if (m_xml.hasError())
            m_manual.error = QString("line %1: %2").arg(m_xml.lineNumber()).arg(m_xml.errorString());
        return m_manual;
    }

private:
    QString attribute(const char* name) const { return m_xml.attributes().value(QLatin1String(name)).toString(); }

    void start()
    {
        const auto element = m_xml.name();
        const QString use = attribute("class");
        if (element == u"div" && use == "example")
            m_manual.examples.append({attribute("id"), {}});
        else if (element == u"a" && m_xml.attributes().hasAttribute("name"))
            m_manual.anchors << attribute("name");
        else if (element == u"a" && attribute("href").startsWith('#'))
            link(use);
        else if (element == u"img")
            m_manual.pictures << attribute("src");
        else if (element == u"table" &&
                 QStringList{"sheet", "run", "result", "copied", "readings", "prepared"}.contains(use))
            add({use, table(), {}});
        else if (element == u"pre" && use == "report")
            add({use, {}, words().trimmed()});
    }

    /// An example may refer to the samples of the first one instead of a sheet of its own.
    void link(const QString& use)
    {
        m_manual.links << attribute("href").mid(1);
        if (use == "samples")
            add(m_manual.examples.first().steps.first());
    }

    void add(const ManualStep& step) { m_manual.examples.last().steps << step; }

    QString words()
    {
        const QString text = m_xml.readElementText(QXmlStreamReader::IncludeChildElements);
        m_manual.plainText += ' ' + text + ' ';
        return text;
    }

    QList<QStringList> table()
    {
        QList<QStringList> rows;
        while (m_xml.readNextStartElement()) { // tr
            rows.append(QStringList());
            while (m_xml.readNextStartElement()) // th, td
                rows.last() << words();
        }
        return rows;
    }

    QXmlStreamReader m_xml;
    Manual m_manual;
};

} // namespace support
