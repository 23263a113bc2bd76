#pragma once

#include <QByteArray>
#include <QString>

namespace quilla {

/// A file that was built into the program, such as ":/manual/1-desk.md". Throws `Error` when it is not there.
QByteArray builtInFile(const QString& path);

} // namespace quilla
