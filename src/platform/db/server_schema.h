#pragma once

#include "platform/db/connection_text.h"
#include "platform/db/odbc/odbc_driver.h"

namespace quilla {

/// The version of the library on a PostgreSQL server; 0 where there is none, and on every other server, where
/// the version changes nothing.
qint64 serverSchemaVersion(const OdbcDriver& driver);

/// Throws `Error` for a library on a PostgreSQL server that another version of this program made. A base
/// without a library passes, and so does every other server, where the version changes nothing.
void refuseOtherSchema(const OdbcDriver& driver);

/// Brings a library on a PostgreSQL server to what this program needs: one that an earlier program made, and
/// one whose server has another ICU now than the one that made the indexes. All in one transaction, in which
/// nobody else can use the tables. False when there was nothing to do, as on other servers. Throws `Error`
/// and leaves the library as it was when that fails.
bool upgradeServer(const ConnectionItems& items, const sql::Schema& schema);

} // namespace quilla
