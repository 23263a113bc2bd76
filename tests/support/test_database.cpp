#include "support/test_database.h"

#include "database/library_schema.h"
#include "platform/core/text.h"
#include "platform/db/connection_text.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "support/postgres_database.h"

namespace quilla {

namespace {

class EmbeddedTestDatabase final : public TestDatabase {
public:
    EmbeddedTestDatabase(const QString& folder, const sql::Schema& schema, const Clock& clock)
        : m_file(folder + u"/library.db"_s)
    {
        createEmbedded(m_file, schema, clock, createLibrary);
    }

    QString connectionText() const override
    {
        return u"PROVIDER=MSDASQL;DSN=%1;UID=desk;PWD=;Database=%2;"_s.arg(BuiltInDataSource, m_file);
    }
    void clockMoved() override { } // it asks the clock itself
    QStringList faults() const override { return checkEmbedded(m_file); }

private:
    QString m_file;
};

/// Made once a process: a copy of a finished library takes a tenth of the time.
const PostgresDatabase& emptyLibrary(const sql::Schema& schema, const Clock& clock)
{
    static const auto made = [&] {
        auto database = std::make_unique<PostgresDatabase>();
        PooledFactory factory(schema, clock);
        Connection connection = factory.open(database->connectionText());
        connection.begin();
        createLibrary(connection);
        connection.commit();
        connection.close();
        database->disconnect();
        return database;
    }();
    return *made;
}

class PostgresTestDatabase final : public TestDatabase {
public:
    PostgresTestDatabase(const sql::Schema& schema, const Clock& clock)
        : m_clock(clock)
        , m_database(emptyLibrary(schema, clock).name())
    {
        PostgresTestDatabase::clockMoved();
    }

    QString connectionText() const override { return m_database.connectionText(); }
    void clockMoved() override
    {
        const QString now = localeDateText(m_clock.now());
        m_database.run(
            u"CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE RETURN timestamp '%1'"_s
                .arg(now)
                .toUtf8());
    }
    void waitForTheDead() const override
    {
        const char* const others
            = "SELECT 1 FROM pg_stat_activity WHERE datname=current_database() AND pid<>pg_backend_pid()";
        while (PQntuples(checkedResult(PQexec(m_database.handle(), others)).get())) { }
    }

private:
    const Clock& m_clock;
    PostgresDatabase m_database;
};

} // namespace

std::unique_ptr<TestDatabase> TestDatabase::make(
    const QString& folder, const sql::Schema& schema, const Clock& clock)
{
    if (qgetenv("QUILLA_TEST_ENGINE") == "postgres")
        return std::make_unique<PostgresTestDatabase>(schema, clock);
    return std::make_unique<EmbeddedTestDatabase>(folder, schema, clock);
}

} // namespace quilla
