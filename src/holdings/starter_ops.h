#pragma once

#include "platform/db/connection.h"

#include <QStringList>

namespace quilla {

/// What a new library begins with besides its books and readers.
struct StarterReport {
    int types = 0; ///< with their rules
    int units = 0;
    int holidays = 0;
    QStringList kept; ///< names that were there already and stand as they were
};

/// Enters reader types with their rules, reader units and public holidays from the three files of `folder`,
/// or from those that are built in when it is empty; a file that is not in the folder is passed over. Runs in
/// the caller's transaction. Throws `Error` with the file and the line that is wrong.
StarterReport enterStarter(Connection& connection, const QString& folder = {});

/// The same in one transaction of its own.
StarterReport loadStarter(Connection& connection, const QString& folder = {});

/// Writes the three built-in files into a folder, for a library to change. Throws `Error` when one of them is
/// there already or can't be written.
QStringList writeStarter(const QString& folder);

} // namespace quilla
