#include "platform/db/replace_embedded.h"

#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
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

QString groupOf(const QString& library)
{
    const QFileInfo file(library);
    return file.permission(QFile::WriteGroup) ? file.group() : QString();
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
        if (error.number == ErrorNumber::InUse) throw;
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

} // namespace

void replaceEmbedded(
    const QString& library, const QString& backup, const QString& kept, const sql::Schema& schema)
{
    refuseUnfitNames(library, backup, kept);
    const QString incoming = library + u"-incoming"_s;
    QFile::remove(incoming); // of an attempt that a crash ended
    const SystemClock clock;
    const auto sole = lockLibrary(library, clock);
    backupEmbedded(backup, incoming, schema, groupOf(library));
    keepUnder(library, kept);
    move(incoming, library);
}

} // namespace quilla
