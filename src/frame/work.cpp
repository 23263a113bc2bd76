#include "frame/work.h"

#include "frame/sublib.h"

namespace quilla {

void Work::openAsking()
{
    m_goOn = OpenDbConnection(m_session, m_conn) == GoOn;
}

StrictWork::StrictWork(Session& session, Opened opened)
    : Work(session)
{
    if (opened == Opened::Asking)
        openAsking();
    else
        m_conn = session.connections.open(session.ConnectionText);
}

ResumingWork::ResumingWork(Session& session, Opened opened)
    : Work(session)
{
    session.error.clear();
    if (opened == Opened::Asking)
        openAsking();
    else
        session.error.attempt([&] { m_conn = session.connections.open(session.ConnectionText); });
}

std::optional<int> ResumingWork::send(QStringView tsql)
{
    return m_session.error.attempt([&] { return m_conn.execute(tsql); });
}

Recordset ResumingWork::select(QStringView tsql, CursorType cursor)
{
    Recordset rows;
    m_session.error.attempt([&] { rows = m_conn.open(tsql, cursor); });
    return rows;
}

} // namespace quilla
