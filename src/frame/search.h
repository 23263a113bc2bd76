#pragma once

#include "frame/session.h"

#include <QStringList>

namespace quilla {

/// What a list shows: a select, narrowed and sorted by the operator. The list is loaded, printed and exported
/// from this one value.
struct ListSearch {
    QString select {}; ///< with nothing after it
    QString condition {}; ///< empty for every row
    QString order {}; ///< empty for the order of entry
    QString joint = u" where "_s; ///< " And " after a select that has a condition of its own

    /// The whole statement. The condition gets no brackets of its own, so an OR at its top binds weaker than
    /// what stands in front of it.
    QString statement() const;
    /// The same search with another select.
    ListSearch of(const QString& otherSelect) const { return {otherSelect, condition, order, joint}; }
};

/// The rows found, read in resume mode: a select that fails finds none. nullopt when no connection can be
/// had.
std::optional<Recordset> rowsFound(Session& session, const ListSearch& search);
/// The texts of a select's first column, read in the same way; empty when no connection can be had.
QStringList firstColumn(Session& session, const QString& select);

} // namespace quilla
