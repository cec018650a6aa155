#pragma once

#include <QString>

/// Files that survive a full disk, a broken disk and a power cut.
namespace app
{

/// The reason why a path can hold neither a session nor a table even if its permissions allow it: a pipe would wait for
/// its other end, and saving would replace a device with a file. Empty for a regular file and for an unused name.
QString notAFile(const QString& path);

/// Writes a temporary file, waits for the disk and replaces the old file, which therefore survives a failure. Returns
/// the reason of a failure; empty if the file is saved.
QString replaceFile(const QString& path, const QByteArray& bytes);

} // namespace app
