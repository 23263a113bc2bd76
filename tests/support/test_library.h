#pragma once

#include "frame/session.h"
#include "platform/db/pooled_factory.h"
#include "support/fixed_clock.h"
#include "support/memory_settings.h"
#include "support/scripted_prompt.h"
#include "support/test_database.h"

#include <QTemporaryDir>

#include <set>

namespace quilla {

/// Counts the calls and does what the test says.
class ScriptedEditor final : public ConnectionEditor {
public:
    void editConnection() override
    {
        ++calls;
        if (edit) edit();
    }
    int calls = 0;
    std::function<void()> edit;
};

/// Columns and values of a row, as statements want them: texts without quotes, "null" for null.
using Row = std::vector<std::pair<QString, QString>>;

/// A real library on a real database, empty at first, with a session on it. On which engine: see
/// `TestDatabase`.
class TestLibrary {
public:
    TestLibrary();
    ~TestLibrary();

    /// Inserts a row with fitting defaults for what a charge needs; `changes` replace or add columns.
    void reader(const QString& code, const Row& changes = {});
    void copy(const QString& barcode, const Row& changes = {});
    /// The copy comes into the library with it when it is not there.
    void loan(const QString& barcode, const QString& reader, const QString& due, const Row& changes = {});
    void reservation(const QString& reader, const Row& changes = {});
    void holiday(const QString& name, const QString& period);
    void operatorUser(const QString& name, const QString& password, bool mayBorrow = true);
    void insert(const QString& table, const Row& row);

    /// Puts the clock of the program and of the server.
    void setNow(const Moment& moment);

    /// Sends a statement past the session.
    int send(const QString& tsql);
    /// The rows of a select, fields joined by "|", null as "null", dates as yyyy-mm-dd.
    QStringList rows(const QString& tsql);
    QString value(const QString& tsql) { return rows(tsql).join(u'\n'); }
    /// All rows of all tables, to see that nothing changed.
    QString everything();

    /// Fails each statement that contains `part`, until it is called with an empty text.
    void failAt(const QString& part);
    /// What the invariants say; empty when all hold.
    QString broken();

    QTemporaryDir folder;
    FixedClock clock {{QDate(2026, 3, 10), QTime(9, 30, 15)}};
    MemorySettings settings;
    ScriptedPrompt prompt;
    ScriptedEditor editor;
    sql::Schema schema;
    std::unique_ptr<TestDatabase> database;
    PooledFactory factory;
    Session session;
    QString connectionText;
    QStringList sent; ///< statements since the last clear, while `failAt` or a test listens

private:
    int m_nextTitle = 1;
};

} // namespace quilla
