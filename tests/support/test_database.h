#pragma once

#include "platform/core/dates.h"
#include "platform/sql/schema.h"

#include <QStringList>

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
    /// What the engine finds wrong with its own storage.
    virtual QStringList faults() const { return {}; }
    /// Until the engine has done with a process that died.
    virtual void waitForTheDead() const { }
};

} // namespace quilla
