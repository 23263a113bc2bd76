#pragma once

#include <QFile>

#include <sys/stat.h>

namespace quilla {

/// The mode bits of a file or folder; 0 when there is none.
inline unsigned modeOf(const QString& path)
{
    struct stat state { };
    return ::stat(QFile::encodeName(path).constData(), &state) == 0 ? state.st_mode & 07777u : 0;
}

} // namespace quilla
