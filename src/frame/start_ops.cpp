#include "frame/start_ops.h"

#include "frame/sublib.h"

#include <QLockFile>

namespace quilla {

struct LockFileGuard::Private {
    QLockFile lock;
};

LockFileGuard::LockFileGuard(const QString& folder)
    : d(new Private {QLockFile(folder + u"/quilla.lock"_s)})
{
    // Only the end of its process frees the lock; a desk may stay open for weeks.
    d->lock.setStaleLockTime(0);
}

LockFileGuard::~LockFileGuard() = default;

bool LockFileGuard::claim()
{
    return d->lock.tryLock(0);
}

void readServerAndDatabase(Session& session)
{
    constexpr QStringView server = u"Server=";
    constexpr QStringView database = u"Database=";
    const QStringList items = session.ConnectionText.split(u';');
    for (const QString& item : items) {
        if (item.contains(server)) session.ServerName = item.sliced(server.size());
        if (item.contains(database)) session.DatabaseName = item.sliced(database.size());
    }
}

bool prepareStart(Session& session, InstanceGuard& guard)
{
    if (!guard.claim()) {
        session.prompt.inform(u"程序已经运行，不能再次装载。"_s, OperationTitle);
        return false;
    }
    if (readConnectionText(session))
        readServerAndDatabase(session);
    else
        session.connectionEditor.editConnection();
    return true;
}

} // namespace quilla
