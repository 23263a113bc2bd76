#pragma once

#include <QByteArray>
#include <QString>

namespace quilla {

/// A file that is built into the program, `name` below "holdings/".
QByteArray builtIn(const QString& name);

} // namespace quilla
