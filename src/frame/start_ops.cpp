#include "frame/start_ops.h"

#include "frame/sublib.h"
#include "platform/core/lock_file.h"
#include "platform/core/private_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

namespace quilla {

struct LockFileGuard::Private {
    explicit Private(const QString& folder_)
        : folder(folder_)
        , lock(folder_ + u"/quilla.lock"_s)
    {
    }
    QString folder;
    QLockFile lock;
};

LockFileGuard::LockFileGuard(const QString& folder)
    : d(std::make_unique<Private>(folder))
{
}

LockFileGuard::~LockFileGuard() = default;

namespace {

Error unusableFolder(const QString& folder)
{
    return Error(75, u"LockFileGuard"_s,
        u"程序不能在数据文件夹中写入：\n%1\n\n请检查当前用户是否有权写入该文件夹、磁盘是否已满，处理好后重新启动程序。"_s
            .arg(QDir::toNativeSeparators(folder)));
}

} // namespace

bool LockFileGuard::claim()
{
    if (d->lock.isLocked()) return true;
    // Asked first: where nothing can be written, a lock left by a crash looks like one that is held.
    if (!makePrivateFolder(d->folder) || !QFileInfo(d->folder).isWritable()) throw unusableFolder(d->folder);
    // Only the end of its process frees the lock; a desk may stay open for weeks.
    if (!takeLock(d->lock)) {
        if (d->lock.error() == QLockFile::LockFailedError) return false;
        throw unusableFolder(d->folder);
    }
    QFile::setPermissions(d->lock.fileName(), OwnerOnly);
    return true;
}

QString mendSettings(FileSettings& settings)
{
    const QString application = StoredText::Application.toString();
    const QString kept = settings.mend(application);
    if (kept.isEmpty()) return {};
    return u"设置文件里有读不懂的内容：%1\n读得懂的设置照常使用，原来的文件保存为：%2\n\n如果打开的不是原来的图书馆，请运行“青简台设置”（quilla-setup）重新选择。"_s
        .arg(settings.fileOf(application), kept);
}

bool prepareSettings(FileSettings& settings, Prompt& prompt)
{
    try {
        const QString mended = mendSettings(settings);
        if (!mended.isEmpty()) prompt.warn(mended, OperationTitle);
        return true;
    } catch (const Error& error) {
        prompt.stop(error.text, OperationTitle);
        return false;
    }
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

namespace {

bool becomeTheInstance(Session& session, InstanceGuard& guard)
{
    try {
        if (guard.claim()) return true;
        session.prompt.inform(u"程序已经运行，不能再次装载。"_s, OperationTitle);
    } catch (const Error& error) {
        session.prompt.stop(error.text, OperationTitle);
    }
    return false;
}

} // namespace

bool prepareStart(Session& session, InstanceGuard& guard)
{
    if (!becomeTheInstance(session, guard)) return false;
    if (readConnectionText(session))
        readServerAndDatabase(session);
    else
        session.connectionEditor.editConnection();
    return true;
}

} // namespace quilla
