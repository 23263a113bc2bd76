#include "platform/db/odbc/odbc_driver.h"

#include "platform/core/text.h"
#include "platform/db/buffered_cursor.h"

namespace quilla {

OdbcDriver::OdbcDriver(const ConnectionItems& items)
    : m_connection(items)
{
}

bool OdbcDriver::isAlive()
{
    // Longer than the time between two statements of an operation, shorter than that between two scans.
    constexpr qint64 Silence = 100;
    if (isLost() || m_transaction != Transaction::None) return false;
    if (m_connection.silence() < Silence) return true;
    try {
        m_connection.run(u"select 1");
        return true;
    } catch (const Error&) {
        return false;
    }
}

void OdbcDriver::refuseAfterLostTransaction() const
{
    if (m_connection.isLost())
        throw Error(ErrorNumber::NotOpen, u"ODBC"_s, u"与数据库服务器的连接已断开。"_s);
    if (m_transaction == Transaction::GivenUp)
        throw Error(ErrorNumber::NotOpen, u"ODBC"_s, u"数据库服务器已撤销当前事务。"_s);
}

OdbcStatementLoan OdbcDriver::prepare(
    const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    refuseAfterLostTransaction();
    auto prepared = m_statements.lend(statement);
    prepared->bind(statement, literals);
    return prepared;
}

/// Runs `step`. When it fails inside a transaction, what it has sent is undone.
template <typename Step> auto OdbcDriver::guarded(bool writes, Step step)
{
    try {
        protect();
        const auto result = step();
        m_wrote = m_wrote || writes;
        return result;
    } catch (const Error&) {
        undo();
        throw;
    }
}

void OdbcDriver::protect()
{
    const ServerDialect& dialect = m_connection.dialect();
    const bool needed = m_transaction == Transaction::Open && m_onFailure == OnFailure::KeepTransaction;
    if (!needed || !dialect.save || !m_wrote) return;
    m_connection.run(m_saved ? dialect.saveAgain : dialect.save);
    m_saved = true;
    m_wrote = false;
}

/// Back to before the statement that failed.
void OdbcDriver::undo() noexcept
{
    if (m_transaction != Transaction::Open) return;
    const ServerDialect& dialect = m_connection.dialect();
    try {
        bool kept = !m_connection.isLost() && m_onFailure == OnFailure::KeepTransaction;
        if (kept && dialect.save) m_connection.run(m_saved ? dialect.undo : dialect.beginAgain);
        if (kept && dialect.openTransactions) kept = m_connection.number(dialect.openTransactions) > 0;
        if (!kept) m_transaction = Transaction::GivenUp;
    } catch (const Error&) {
        m_transaction = Transaction::GivenUp;
    }
}

/// A statement without parameters defines something or occurs once, so it is sent as it stands and not
/// prepared.
int OdbcDriver::execute(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    if (statement.parameters.empty()) {
        refuseAfterLostTransaction();
        return guarded(true, [&] { return m_connection.run(QString::fromUtf8(statement.text)); });
    }
    const auto prepared = prepare(statement, literals);
    return guarded(true, [&] {
        prepared->run();
        return prepared->rowCount();
    });
}

std::unique_ptr<Cursor> OdbcDriver::query(
    const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    auto prepared = prepare(statement, literals);
    Fields fields = guarded(!statement.procedure.isEmpty(), [&] {
        prepared->run();
        return prepared->fields(statement);
    });
    auto cursor = std::make_unique<OdbcCursor>(std::move(prepared), std::move(fields));
    // Inside a transaction other statements follow before the rows have all been read.
    const bool first = m_connection.holdsOneResult() && m_transaction != Transaction::None;
    if (first) return std::make_unique<BufferedCursor>(*cursor);
    return cursor;
}

void OdbcDriver::begin(OnFailure onFailure)
{
    refuseAfterLostTransaction();
    m_connection.run(m_connection.dialect().begin);
    m_transaction = Transaction::Open;
    m_wrote = m_saved = false;
    m_onFailure = onFailure;
}

void OdbcDriver::commit()
{
    try {
        refuseAfterLostTransaction();
        m_connection.run(m_connection.dialect().commit);
        m_transaction = Transaction::None;
    } catch (const Error&) {
        rollback();
        throw;
    }
}

/// A server that has gone has rolled back by itself.
void OdbcDriver::gatherStatistics()
{
    if (m_connection.dialect().gatherStatistics) m_connection.run(m_connection.dialect().gatherStatistics);
}

void OdbcDriver::rollback()
{
    if (std::exchange(m_transaction, Transaction::None) == Transaction::None) return;
    if (m_connection.isLost()) return;
    try {
        m_connection.run(m_connection.dialect().rollback);
    } catch (const Error&) {
        if (m_connection.isLost()) return;
        m_stuck = true;
        throw;
    }
}

} // namespace quilla
