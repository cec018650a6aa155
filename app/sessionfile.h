#pragma once

#include <QString>

#include <string>
#include <string_view>

/// Session files on disk, in the system's 8-bit encoding. Texts here are UTF-8.
namespace app
{

/// What was read, or why nothing was.
struct SessionFileText {
    std::string text; // of a file that is not a session only the first bytes
    QString error;    // the system's reason; empty: the file was read
};

/// Reads no more of a file than a session can hold. A text that is not in the system's encoding is read as Latin-1.
SessionFileText readSessionFile(const QString& path);

/// Writes beside the file, waits for the disk and moves the result over it, so that a failure leaves the old file
/// whole. Returns the reason of a failure, empty when the session is saved.
QString writeSessionFile(const QString& path, std::string_view text);

} // namespace app
