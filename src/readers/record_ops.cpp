#include "readers/record_ops.h"

#include "frame/sublib.h"

namespace quilla {

void removeRecords(Session& session, const RecordRemoval& removal, const QStringList& keys,
    const std::function<void()>& gone)
{
    if (!session.prompt.ask(removal.question, OperationTitle, Icon::Question)) return;
    Connection conn;
    if (OpenDbConnection(session, conn) != GoOn) return;
    for (const QString& key : keys) {
        conn.execute(removal.statement.arg(doubled(key)));
        gone();
    }
}

} // namespace quilla
