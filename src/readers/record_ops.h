#pragma once

#include "frame/session.h"

namespace quilla {

/// What a list of records takes out of the database, by the text of its first column.
struct RecordRemoval {
    QString question;
    QString statement; ///< "%1" is the key, its quotes doubled
};

/// Asks, then takes out one record after the other; `gone` follows each of them, so that the list shows
/// what is really left if a later one fails. Throws `Error`.
void removeRecords(Session& session, const RecordRemoval& removal, const QStringList& keys,
    const std::function<void()>& gone);

} // namespace quilla
