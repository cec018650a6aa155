#pragma once

#include <cerrno>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace support
{

/// The errno with which waiting for the disk fails, for files and for folders; 0: no error.
struct DiskFault {
    int file = 0;
    int folder = 0;
};
inline DiskFault diskFault;

} // namespace support

/// Replaces the C library's function in the whole test program.
extern "C" inline __attribute__((used)) int fsync(int handle)
{
    struct stat status = {};
    const bool isFolder = fstat(handle, &status) == 0 && S_ISDIR(status.st_mode);
    errno = isFolder ? support::diskFault.folder : support::diskFault.file;
    return errno == 0 ? static_cast<int>(syscall(SYS_fsync, handle)) : -1;
}
