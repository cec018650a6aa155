#pragma once

#include <QFile>
#include <QStringList>

namespace support
{

/// The rows of a table in tests/data: one row per line, fields separated by tabs, with optional quotation marks. Empty
/// lines and lines that start with "//" are skipped.
inline QList<QStringList> dataRows(const QString& name)
{
    QFile file(QString(VORLO_TEST_DATA "/") + name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    QList<QStringList> rows;
    for (const QString& line : QString::fromUtf8(file.readAll()).split('\n')) {
        if (line.isEmpty() || line.startsWith("//"))
            continue;
        QStringList fields = line.split('\t');
        for (QString& field : fields)
            if (field.size() >= 2 && field.startsWith('"') && field.endsWith('"'))
                field = field.mid(1, field.size() - 2);
        rows << fields;
    }
    return rows;
}

} // namespace support
