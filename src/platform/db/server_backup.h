#pragma once

#include "platform/db/connection_text.h"

namespace quilla {

/// Saves the database that a text leads to on a PostgreSQL server in the new file `to`, by the server's own
/// `pg_dump`; the file is read back. The password is handed over where no other user sees it. Throws `Error`
/// with what the tool said; for a server whose tool can't run here, with the command to run there.
void backupServer(const ConnectionItems& items, const QString& to);

/// Restores such a file in the empty database that a text leads to, all of it or nothing, by `pg_restore`.
/// Throws `Error` with what the tool said, also when the database holds tables already; as above for other
/// servers.
void restoreServer(const ConnectionItems& items, const QString& from);

} // namespace quilla
