#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Session files on disk, in the system's 8-bit encoding. Texts here are UTF-8.
namespace app
{

/// The text of a file, or the reason why it was not read.
struct SessionFileText {
    std::string text; // only the first bytes if the file is not a session
    QString error;    // the system's reason; empty: the file was read
};

/// Reads at most as many bytes as a session can have. A text that is not in the system's encoding is read as Latin-1.
SessionFileText readSessionFile(const QString& path);

/// Writes a temporary file, waits for the disk and replaces the old file, which therefore survives a failure. Returns
/// the reason of a failure; empty if the session is saved.
QString writeSessionFile(const QString& path, std::string_view text);

} // namespace app
