#pragma once

/// Comes first in every source of the extension: calls of SQLite go to the program that loaded it, whichever
/// copy of SQLite that has in it.
#include <sqlite3ext.h>
SQLITE_EXTENSION_INIT3
