#pragma once

#include <QString>

#include <string>

/// Tables of other programs, from files and from the clipboard.
namespace app
{

/// A text of UTF-8 with LF as its line end, or the reason why there is none.
struct TableText {
    std::string text;
    QString error; // empty: the text can be read as a table
};

TableText readTableFile(const QString& path);
TableText tableOf(const QString& clipboardText);

} // namespace app
