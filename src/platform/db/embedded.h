#pragma once

#include "platform/core/dates.h"
#include "platform/db/connection.h"
#include "platform/db/connection_text.h"
#include "platform/sql/schema.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace quilla {

/// The version of the schema that this program reads and writes; the embedded database carries it.
constexpr int EmbeddedSchemaVersion = 1;

/// The file that a connection text leads to, when it leads to the embedded database: the built-in data
/// source, or the Access driver entry of the connection dialog. A relative path is meant from the folder
/// of `embeddedDatabaseFile()`. Nullopt for a text that leads to a server.
std::optional<QString> embeddedFileOf(const ConnectionItems& items);

/// Creates the embedded database `path` (and its folder). `fill` makes tables, views and first rows; it
/// runs inside one transaction, which also sets the version. The file stands under its name only when all
/// of it succeeded and is on the disk. The owner alone may read it, and the members of `group` when one is
/// named. Throws `Error` when the file exists already or can't be made whole, and passes on what `fill`
/// throws.
void createEmbedded(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& fill, const QString& group = {});

/// Copies a library that may be in use to the new file `to`, as it stands at one moment. Throws `Error` when
/// `from` is damaged or no library of this version with the tables of `schema`, when `to` exists already, or
/// when the copy fails; no file is left then. `group` as above.
void backupEmbedded(
    const QString& from, const QString& to, const sql::Schema& schema, const QString& group = {});

/// What the engine finds wrong inside the file, a line a fault; empty when it is sound. Throws `Error`
/// when the file can't be opened at all.
QStringList checkEmbedded(const QString& path);

/// Takes from the file, its log included, the access that others have and nobody gave them; see
/// `tightenAccess`.
void tightenEmbedded(const QString& path);

} // namespace quilla
