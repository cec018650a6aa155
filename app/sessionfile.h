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

/// The reason why a path can hold neither a session nor a table even if its permissions allow it: a pipe would wait for
/// its other end, and saving would replace a device with a file. Empty for a regular file and for an unused name.
QString notAFile(const QString& path);

/// Reads at most as many bytes as a session can have. A text that is not in the system's encoding is read as Latin-1.
SessionFileText readSessionFile(const QString& path);

/// Writes a temporary file, waits for the disk and replaces the old file, which therefore survives a failure. Returns
/// the reason of a failure; empty if the session is saved.
QString writeSessionFile(const QString& path, std::string_view text);

} // namespace app
