#pragma once

#include "quilla-db/commands.h"

namespace quilla {

Outcome backupTo(const Arguments& arguments, QTextStream& out);

/// Without a file it shows the library's daily backups and asks which one.
Outcome restoreFrom(const Arguments& arguments, QTextStream& out);

/// Sets where the daily backups go, or shows it.
Outcome backupFolderOf(const Arguments& arguments, QTextStream& out);

} // namespace quilla
