#include "frame/record_ops.h"

#include "frame/work.h"

namespace quilla {

void removeRecords(Session& session, const RecordRemoval& removal, const QStringList& keys,
    const std::function<void()>& gone)
{
    if (!session.prompt.ask(removal.question, OperationTitle, Icon::Question)) return;
    StrictWork work(session);
    if (!work) return;
    for (const QString& key : keys) {
        work.execute(removal.statement.arg(doubled(key)));
        gone();
    }
}

} // namespace quilla
