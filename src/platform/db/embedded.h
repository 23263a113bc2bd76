#pragma once

#include "platform/core/dates.h"
#include "platform/core/progress.h"
#include "platform/db/connection.h"
#include "platform/db/connection_text.h"
#include "platform/sql/schema.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace quilla {

/// The version of the schema that this program reads and writes; the embedded database carries it.
///   1  texts in the order of their code points
///   2  texts in the order of `compareText`, whose version stands in the file
constexpr int EmbeddedSchemaVersion = 2;

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
/// `from` is damaged or no library of this or an earlier version with the tables of `schema`, when `to`
/// exists already, or when the copy fails; no file is left then. `group` as above.
void backupEmbedded(
    const QString& from, const QString& to, const sql::Schema& schema, const QString& group = {});

/// Whether the file is a library of an earlier version of this program. Throws `Error` when it can't be read.
bool isEarlierLibrary(const QString& path);

/// What `upgradeEmbedded` did.
struct Upgrade {
    bool done = false; ///< false when the library was up to date
    QString copy; ///< the library as it was before; empty when its version did not change
};

/// Brings a library of an earlier version, or one that another ICU sorted, to what this program needs. One of
/// an earlier version is copied into the same folder first, and the copy is checked. The library itself
/// changes in one transaction: a crash leaves the old one or the new one, whole. Nobody else may have it open
/// meanwhile. Throws `Error` and leaves the library as it was when something fails, and when `progress` says
/// that the work is to end.
Upgrade upgradeEmbedded(const QString& path, const sql::Schema& schema, Progress& progress);

/// Lets `read` look at the library as it stands, also at one of an earlier version. Throws `Error` when it is
/// none, and passes on what `read` throws.
void readEmbedded(const QString& path, const sql::Schema& schema, const Clock& clock,
    const std::function<void(Connection&)>& read);

/// What the engine finds wrong inside the file, a line a fault; empty when it is sound. Throws `Error`
/// when the file can't be opened at all.
QStringList checkEmbedded(const QString& path);

/// Takes from the file, its log included, the access that others have and nobody gave them; see
/// `tightenAccess`.
void tightenEmbedded(const QString& path);

} // namespace quilla
