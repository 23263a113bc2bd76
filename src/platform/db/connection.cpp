#include "platform/db/connection.h"

#include "platform/core/text.h"
#include "platform/db/pool.h"
#include "platform/sql/shape_statement.h"

namespace quilla {

namespace {

Connection::Lease& opened(const std::unique_ptr<Connection::Lease>& lease)
{
    if (!lease) throw Error(ErrorNumber::NotOpen, u"Connection"_s, u"数据库连接没有打开。"_s);
    return *lease;
}

} // namespace

Connection::Connection() = default;
Connection::Connection(std::unique_ptr<Lease> lease)
    : m_lease(std::move(lease))
{
}
Connection::~Connection() = default;
Connection::Connection(Connection&&) noexcept = default;
Connection& Connection::operator=(Connection&&) noexcept = default;

bool Connection::isOpen() const
{
    return m_lease != nullptr;
}
void Connection::close()
{
    m_lease.reset();
}

bool Connection::keepsProcedures() const
{
    return opened(m_lease).keepsProcedures();
}

int Connection::execute(QStringView tsql)
{
    return opened(m_lease).execute(tsql);
}
Recordset Connection::open(QStringView tsql, CursorType cursor)
{
    return opened(m_lease).open(tsql, cursor);
}

Recordset Connection::openShaped(QStringView shape)
{
    const sql::ShapeStatement statement = sql::readShape(shape);
    return shapeRecords(open(statement.select), statement);
}

void Connection::prepareEmptyBase()
{
    opened(m_lease).prepareEmptyBase();
}

void Connection::withOwnNumbers(const sql::Table& table, qint64 given, const std::function<void()>& fill)
{
    opened(m_lease).withOwnNumbers(table, given, fill);
}

qint64 Connection::lastNumber(const sql::Table& table)
{
    return opened(m_lease).lastNumber(table);
}

void Connection::begin(OnFailure onFailure)
{
    opened(m_lease).begin(onFailure);
}
void Connection::endTransactionOnFailure()
{
    opened(m_lease).endTransactionOnFailure();
}
void Connection::commit()
{
    opened(m_lease).commit();
}
void Connection::rollback()
{
    opened(m_lease).rollback();
}

void Connection::gatherStatistics()
{
    opened(m_lease).gatherStatistics();
}

} // namespace quilla
