#pragma once

#include "platform/sql/schema.h"

namespace quilla {

/// Puts a copy of the library `backup` in the place of the library `library`, which is kept under the new
/// name `kept` in the same folder; a damaged one is kept with its log. The copy is checked before anything
/// moves, and who may use the file stays as it was. Throws `Error` and leaves the library where it was when
/// the backup is damaged or no library, when somebody has the library open or nobody can tell, and when
/// `kept` exists. `library` is the file itself, not a link to it.
void replaceEmbedded(
    const QString& library, const QString& backup, const QString& kept, const sql::Schema& schema);

} // namespace quilla
