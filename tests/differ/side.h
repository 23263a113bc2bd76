#pragma once

#include "platform/db/pooled_factory.h"

#include <QStringList>

namespace quilla::test {

/// What a statement did.
struct Outcome {
    QString failure; ///< the words of the error; empty for none
    std::vector<QStringList> rows; ///< or one row with the number of rows that changed
};

/// A library on one engine.
class Side {
public:
    Side(const sql::Schema& known, const Clock& clock, const QString& connectionText);

    /// Sends the statement; after a write, which is rolled back, the rows of its table follow.
    Outcome send(const QString& statement);

    const sql::Schema& schema;
    PooledFactory factory;
    Connection connection;
};

/// Whether two engines did the same. Where the engine may choose, its choice does not count: the order of
/// rows that come from groups, and the spelling that stands for equal texts.
bool isSame(const QString& statement, const Outcome& left, const Outcome& right);

/// What one engine did, and the other did not: the failure, or the first rows that differ.
QString shownBeside(const Outcome& outcome, const Outcome& other);

} // namespace quilla::test
