#include "platform/db/replace_embedded.h"

#include "platform/core/new_file.h"
#include "platform/core/private_files.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <sys/stat.h>
#include <unistd.h>

namespace quilla {

namespace {

Error cannotMove(const QString& file)
{
    return Error(
        75, u"restore"_s, u"不能移动文件，请检查文件夹的权限和磁盘空间："_s + QDir::toNativeSeparators(file));
}

void refuseUnfitNames(const QString& library, const QString& backup, const QString& kept)
{
    if (QFileInfo(library).canonicalFilePath() == QFileInfo(backup).canonicalFilePath())
        throw Error(58, u"restore"_s, u"这个文件就是正在使用的数据库，请选择一个备份。"_s);
    if (QFile::exists(kept))
        throw Error(58, u"restore"_s, u"文件已经存在："_s + QDir::toNativeSeparators(kept));
}

bool hasAccessOf(const struct stat& wanted, const QByteArray& file)
{
    struct stat state { };
    return ::stat(file.constData(), &state) == 0 && state.st_uid == wanted.st_uid
        && state.st_gid == wanted.st_gid && state.st_mode == wanted.st_mode;
}

/// The owner, for whom an administrator may be working, and the group can use the new file as they could the
/// old one.
void giveAccessOf(const QString& library, const QString& incoming)
{
    const QByteArray to = QFile::encodeName(incoming);
    struct stat state { };
    const bool known = ::stat(QFile::encodeName(library).constData(), &state) == 0;
    if (known && hasAccessOf(state, to))
        return; // on some disks all files have the same, which nobody can change
    const bool given = known
        && (::chown(to.constData(), state.st_uid, state.st_gid) == 0
            || ::chown(to.constData(), uid_t(-1), state.st_gid) == 0 || !(state.st_mode & S_IWGRP))
        && ::chmod(to.constData(), state.st_mode & (S_IWGRP | S_IRGRP | S_IWUSR | S_IRUSR)) == 0;
    if (given) return tightenAccess(incoming);
    QFile::remove(incoming);
    throw Error(75, u"restore"_s,
        u"不能让原来的用户组使用恢复的数据库，请由用户组的成员恢复："_s + QDir::toNativeSeparators(library));
}

/// Without the right to open it nobody can tell whether a desk is using it.
bool isOutOfReach(const Error& error)
{
    const int code = error.number & 0xff;
    return error.number == ErrorNumber::InUse || code == SQLITE_CANTOPEN || code == SQLITE_PERM
        || code == SQLITE_FULL;
}

/// Nobody may write into a file that is moved away. Null for a library that is too damaged to be locked.
std::unique_ptr<SqliteDriver> lockLibrary(const QString& library, const Clock& clock)
{
    try {
        auto sole = std::make_unique<SqliteDriver>(library, clock, SqliteDriver::As::SoleUse);
        sole->handle().run("pragma journal_mode=delete"); // the log goes into the file
        sole->handle().run("pragma journal_mode=memory"); // and lets go of the journal of this change
        QFile::remove(library + u"-journal"_s);
        return sole;
    } catch (const Error& error) {
        if (isOutOfReach(error)) throw;
        return {};
    }
}

void move(const QString& from, const QString& to)
{
    const bool moved
        = std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
    if (!moved) throw cannotMove(from);
}

/// A second name for the file, so that at no moment the library is without a file. Some disks know no second
/// names; there the file moves away first.
void keepUnder(const QString& library, const QString& kept)
{
    for (const QString& ending : {u"-wal"_s, u"-journal"_s})
        if (QFile::exists(library + ending)) move(library + ending, kept + ending);
    QFile::remove(library + u"-shm"_s);
    if (::link(QFile::encodeName(library).constData(), QFile::encodeName(kept).constData()) != 0)
        move(library, kept);
}

/// Without that a power failure brings the old library back after all, and what desks have written since is
/// lost.
void saveNames(const QString& library)
{
    if (isSaved(QFileInfo(library).absolutePath())) return;
    throw Error(75, u"restore"_s,
        u"已经换成备份，但是磁盘没有确认保存。请检查磁盘，再恢复一次："_s
            + QDir::toNativeSeparators(library));
}

} // namespace

void replaceEmbedded(
    const QString& library, const QString& backup, const QString& kept, const sql::Schema& schema)
{
    refuseUnfitNames(library, backup, kept);
    const QString incoming = library + u"-incoming"_s;
    QFile::remove(incoming); // of an attempt that a crash ended
    const SystemClock clock;
    const auto sole = lockLibrary(library, clock);
    backupEmbedded(backup, incoming, schema);
    giveAccessOf(library, incoming);
    keepUnder(library, kept);
    try {
        move(incoming, library);
    } catch (const Error&) {
        if (!QFile::exists(library)) move(kept, library); // on a disk without second names
        throw;
    }
    saveNames(library);
}

} // namespace quilla
