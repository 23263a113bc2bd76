#pragma once

#include "platform/db/connection_text.h"

#include <QStringList>

namespace quilla {

/// A database in words, as a support question needs it.
struct DatabaseFacts {
    QString engine; ///< "SQLite 3.40.1", or the driver or data source that leads to the server
    QString place; ///< the file, or the server and the database on it; never a user or a password
};
DatabaseFacts databaseFacts(const ConnectionItems& items);

/// The libraries that the database work rests on, with the versions that run: "SQLite 3.40.1", "ICU 72.1".
QStringList databaseLibraries();

} // namespace quilla
