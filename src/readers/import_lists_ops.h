#pragma once

#include "platform/db/connection.h"
#include "readers/import_fields.h"

#include <QDate>
#include <QHash>
#include <QSet>

namespace quilla {

/// The form in which codes and names are compared as the database does.
QString comparable(QStringView text);

/// What lines are checked against.
struct ImportLists {
    QDate today; ///< the server's
    QHash<QString, QString> types; ///< as they are spelt, by comparable name
    QHash<QString, QString> units;
    QHash<QString, ImportValues> parameters; ///< by comparable type
    QSet<QString> codes; ///< comparable, of the cards there are
    QSet<QString> details; ///< also of cards that are gone
};
ImportLists readImportLists(Connection& connection);

} // namespace quilla
