#include "platform/db/pool.h"

#include "platform/core/text.h"
#include "platform/db/literals.h"
#include "platform/db/sources.h"

#include <algorithm>

namespace quilla {

Pool::Pool(Open open, const PoolContext& context)
    : m_open(std::move(open))
    , m_context(context)
{
}

std::unique_ptr<Connection::Lease> Pool::lend()
{
    dropDead();
    return std::make_unique<Connection::Lease>(shared_from_this(), forReading());
}

void Pool::drain()
{
    std::erase_if(m_physicals, [](const Shared& physical) { return physical->isIdle(); });
}

void Pool::dropDead()
{
    std::erase_if(m_physicals,
        [](const Shared& physical) { return physical->isIdle() && !physical->driver->isAlive(); });
}

Pool::Shared Pool::add()
{
    auto physical = std::make_shared<Physical>();
    physical->driver = m_open();
    m_physicals.push_back(physical);
    return physical;
}

Pool::Shared Pool::forReading()
{
    const auto found = std::find_if(m_physicals.begin(), m_physicals.end(),
        [](const Shared& physical) { return physical->servesReads(); });
    return found != m_physicals.end() ? *found : add();
}

const Pool::Shared* Pool::openTransaction() const
{
    const auto found = std::find_if(
        m_physicals.begin(), m_physicals.end(), [](const Shared& physical) { return physical->transaction; });
    return found != m_physicals.end() ? &*found : nullptr;
}

Pool::Shared Pool::forWriting(const Shared& current)
{
    const Shared* open = current->driver->hasOneWriter() ? openTransaction() : nullptr;
    if (open) return *open;
    if (current->isFree()) return current;
    const auto found = std::find_if(
        m_physicals.begin(), m_physicals.end(), [](const Shared& physical) { return physical->isFree(); });
    return found != m_physicals.end() ? *found : add();
}

Pool::Shared Pool::forTransaction(const Shared& current)
{
    if (current->driver->hasOneWriter() && openTransaction())
        throw Error(ErrorNumber::CannotOpen, u"Connection"_s,
            u"本程序的另一个操作还没有结束它的事务，请稍后再试。"_s);
    return forWriting(current);
}

Connection::Lease::Lease(std::shared_ptr<Pool> pool, std::shared_ptr<Physical> physical)
    : m_pool(std::move(pool))
    , m_physical(std::move(physical))
{
    ++m_physical->leases;
}

Connection::Lease::~Lease()
{
    giveUpTransaction();
    --m_physical->leases;
}

void Connection::Lease::moveTo(const std::shared_ptr<Physical>& physical)
{
    if (physical == m_physical) return;
    --m_physical->leases;
    m_physical = physical;
    ++m_physical->leases;
}

void Connection::Lease::announce(QStringView statement) const
{
    if (m_pool->m_context.hook) m_pool->m_context.hook(statement);
}

const sql::Translation& Connection::Lease::prepare(QStringView tsql)
{
    announce(tsql);
    const auto& statement
        = m_pool->m_context.translatorOf(m_physical->driver->engine()).translate(tsql, m_pool->m_literals);
    if (inTransaction()) return statement;
    if (statement.writes)
        moveTo(m_pool->forWriting(m_physical));
    else if (!m_physical->servesReads())
        moveTo(m_pool->forReading());
    return statement;
}

bool Connection::Lease::keepsProcedures() const
{
    return m_physical->driver->engine() == sql::Engine::SqlServer;
}

int Connection::Lease::execute(QStringView tsql)
{
    const auto& statement = prepare(tsql);
    if (!isProcedure(statement)) return m_physical->driver->execute(statement, m_pool->m_literals);
    runProcedure(statement);
    return 0;
}

Recordset Connection::Lease::open(QStringView tsql, CursorType cursor)
{
    const auto& statement = prepare(tsql);
    if (isProcedure(statement)) return runProcedure(statement);
    if (!statement.returnsRows) {
        m_physical->driver->execute(statement, m_pool->m_literals);
        return Recordset();
    }
    try {
        return read(statement, cursor);
    } catch (const Error&) {
        const bool again = m_physical->driver->isLost() && !inTransaction() && statement.procedure.isEmpty();
        if (!again) throw;
    }
    moveTo(m_pool->forReading());
    return read(statement, cursor);
}

Recordset Connection::Lease::read(const sql::Translation& statement, CursorType cursor)
{
    if (cursor == CursorType::Forward) return openForward(statement);
    const auto rows = m_physical->driver->query(statement, m_pool->m_literals);
    return Recordset(std::make_unique<KeysetSource>(*rows));
}

void Connection::Lease::prepareEmptyBase()
{
    sendAll(m_pool->m_context.translatorOf(m_physical->driver->engine()).preparation());
}

void Connection::Lease::withOwnNumbers(
    const sql::Table& table, qint64 given, const std::function<void()>& fill)
{
    sql::Translator& translator = m_pool->m_context.translatorOf(m_physical->driver->engine());
    sendAll(translator.beginOwnNumbers(table));
    fill();
    sendAll(translator.endOwnNumbers(table, given));
}

qint64 Connection::Lease::lastNumber(const sql::Table& table)
{
    const auto select = m_pool->m_context.translatorOf(m_physical->driver->engine()).lastNumber(table);
    if (!select) return 0;
    m_pool->m_literals.clear();
    const Recordset row = read(*select, CursorType::Keyset);
    return row.eof() ? 0 : row.field(0).integer().value_or(0);
}

void Connection::Lease::sendAll(const std::vector<sql::Translation>& statements)
{
    if (!inTransaction()) moveTo(m_pool->forWriting(m_physical));
    for (const sql::Translation& statement : statements)
        m_physical->driver->execute(statement, {});
}

/// Whether it is an "exec" that the program answers itself.
bool Connection::Lease::isProcedure(const sql::Translation& statement) const
{
    return !statement.procedure.isEmpty() && !keepsProcedures();
}

Recordset Connection::Lease::runProcedure(const sql::Translation& statement)
{
    if (!m_pool->m_context.procedures)
        throw Error(
            ErrorNumber::NotUnderstood, u"Connection"_s, u"没有存储过程 %1。"_s.arg(statement.procedure));
    // What the procedure sends writes over the literals, so its arguments are copies.
    std::vector<Value> arguments;
    for (const sql::Parameter& parameter : statement.parameters)
        arguments.push_back(valueOf(m_pool->m_literals[std::size_t(parameter.literal)]));
    Connection connection(std::make_unique<Lease>(m_pool, m_physical));
    return m_pool->m_context.procedures(connection, QString(statement.procedure), arguments);
}

Recordset Connection::Lease::openForward(const sql::Translation& statement)
{
    auto rows = m_physical->driver->query(statement, m_pool->m_literals);
    ++m_physical->cursors;
    return Recordset(
        std::make_unique<ForwardSource>(std::move(rows), [physical = m_physical] { --physical->cursors; }));
}

void Connection::Lease::begin(OnFailure onFailure)
{
    announce(u"begin");
    if (inTransaction()) throw Error(ErrorNumber::CannotOpen, u"Connection"_s, u"本连接上已经有一个事务。"_s);
    try {
        startTransaction(onFailure);
    } catch (const Error&) {
        if (!m_physical->driver->isLost()) throw;
        startTransaction(onFailure);
    }
}

void Connection::Lease::startTransaction(OnFailure onFailure)
{
    moveTo(m_pool->forTransaction(m_physical));
    m_physical->driver->begin(onFailure);
    m_physical->transaction = this;
}

void Connection::Lease::endTransactionOnFailure()
{
    if (inTransaction()) m_physical->driver->endTransactionOnFailure();
}

void Connection::Lease::commit()
{
    if (!inTransaction()) throw Error(ErrorNumber::NotOpen, u"Connection"_s, u"没有要提交的事务。"_s);
    try {
        announce(u"commit");
        m_physical->driver->commit();
        m_physical->transaction = nullptr;
    } catch (...) {
        giveUpTransaction();
        throw;
    }
}

void Connection::Lease::rollback()
{
    if (!inTransaction()) return;
    announce(u"rollback");
    m_physical->transaction = nullptr;
    m_physical->driver->rollback();
}

void Connection::Lease::giveUpTransaction() noexcept
{
    if (!inTransaction()) return;
    m_physical->transaction = nullptr;
    try {
        m_physical->driver->rollback();
    } catch (const Error&) {
        // The connection is of no use any more; isAlive() says so when it is to be lent again.
    }
}

} // namespace quilla
