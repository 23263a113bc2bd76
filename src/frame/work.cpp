#include "frame/work.h"

namespace quilla {

void Work::open(Opened opened)
{
    switch (opened) {
    case Opened::Asking:
        m_opening = OpenDbConnection(m_session, m_conn);
        break;
    case Opened::Directly:
        m_conn = m_session.connections.open(m_session.ConnectionText);
        break;
    case Opened::Shaped:
        OpenShapeConnection(m_session, m_conn);
        break;
    }
}

StrictWork::StrictWork(Session& session, Opened opened)
    : Work(session)
{
    Work::open(opened);
}

ResumingWork::ResumingWork(Session& session, Opened opened)
    : Work(session)
    , m_resume(session.error)
{
    attempt([&] { open(opened); });
}

std::optional<int> ResumingWork::send(QStringView tsql)
{
    return attempt([&] { return m_conn.execute(tsql); });
}

Recordset ResumingWork::select(QStringView tsql, CursorType cursor)
{
    Recordset rows;
    attempt([&] { rows = m_conn.open(tsql, cursor); });
    return rows;
}

} // namespace quilla
