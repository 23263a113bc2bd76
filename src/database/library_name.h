#pragma once

#include "platform/db/connection.h"

namespace quilla {

/// Longer names find no room in a line of a window.
inline constexpr int LibraryNameWidth = 100;

/// What the library calls itself, so that somebody who opens a file or joins a server sees whose it is. Empty
/// for a library that was never given a name.
QString libraryName(Connection& connection);

/// Writes the name into a library that has none yet.
void enterLibraryName(Connection& connection, const QString& name);

} // namespace quilla
