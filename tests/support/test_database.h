#pragma once

#include "platform/core/dates.h"
#include "platform/sql/schema.h"

#include <QString>

#include <memory>

namespace quilla {

/// A new library for one test: an embedded file, or with QUILLA_TEST_ENGINE=postgres a database on the
/// private PostgreSQL of the run (tests/postgres/start.sh).
class TestDatabase {
public:
    /// On the engine of this run. `folder` is the test's own; schema and clock must outlive the database.
    static std::unique_ptr<TestDatabase> make(
        const QString& folder, const sql::Schema& schema, const Clock& clock);
    virtual ~TestDatabase() = default;

    virtual QString connectionText() const = 0;
    /// The clock was put to another time.
    virtual void clockMoved() = 0;
};

} // namespace quilla
