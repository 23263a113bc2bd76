#include "setup/library_file_ops.h"

#include "database/library_name.h"
#include "database/library_schema.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"

#include <QDir>
#include <QFileInfo>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(75, u"set-up"_s, text);
}

qint64 countOf(Connection& connection, QStringView table)
{
    return connection.open(u"select count(*) from %1"_s.arg(table)).field(0).integer().value_or(0);
}

/// The engine would report the same later, in words about its own files.
void refuseUnusable(const QString& file)
{
    const QFileInfo info(file);
    if (!info.exists()) throw fault(u"没有这个文件：%1\n请检查文件夹和文件名。"_s.arg(file));
    if (info.isDir()) throw fault(u"%1 是文件夹，请选择其中的数据库文件。"_s.arg(file));
    const bool usable = info.isReadable() && info.isWritable() && QFileInfo(info.path()).isWritable();
    if (!usable)
        throw fault(
            u"不能读写文件 %1，或者不能在它的文件夹里写入。\n请让管理员给予权限，或者先把文件复制到自己的文件夹。"_s
                .arg(file));
}

void refuseDamage(const QString& file)
{
    const QStringList faults = checkEmbedded(file);
    if (!faults.isEmpty())
        throw fault(u"数据库文件已损坏：%1\n请从备份恢复（quilla-db restore）。损坏之处：\n%2"_s.arg(
            file, faults.mid(0, 5).join(u'\n')));
}

} // namespace

QString FoundLibrary::text() const
{
    const QString head = name.isEmpty() ? QString() : u"“%1”，"_s.arg(name);
    return head + u"图书 %1 种 %2 册，读者 %3 位"_s.arg(titles).arg(copies).arg(readers);
}

FoundLibrary lookAtLibrary(Connection& connection)
{
    return {libraryName(connection), countOf(connection, u"zsk"), countOf(connection, u"sck"),
        countOf(connection, u"dzk")};
}

FoundLibrary lookAtLibraryFile(const QString& file)
{
    refuseUnusable(file);
    FoundLibrary found;
    readEmbedded(file, librarySchema(), SystemClock(),
        [&](Connection& connection) { found = lookAtLibrary(connection); });
    refuseDamage(file);
    found.earlier = isEarlierLibrary(file);
    return found;
}

QString upgradeLibraryFile(const QString& file, Progress& progress)
{
    return upgradeEmbedded(file, librarySchema(), progress).copy;
}

QString freeFile(const QString& name)
{
    const QFileInfo file(name);
    const QString ending = file.suffix().isEmpty() ? QString() : u'.' + file.suffix();
    QString free = name;
    for (int number = 2; QFileInfo::exists(free); ++number)
        free = u"%1/%2-%3%4"_s.arg(file.path(), file.completeBaseName()).arg(number).arg(ending);
    return free;
}

std::optional<Refusal> checkLibraryPath(const QString& path)
{
    if (isBlank(path)) return Refusal {u"请填写数据库文件的位置。"_s};
    if (path.contains(u';') || trimBlanks(path) != path)
        return Refusal {u"文件的位置里不能有分号，开头和结尾不能有空格。"_s};
    if (QDir::isRelativePath(path)) return Refusal {u"请填写完整的位置，以“/”开头，或者按“浏览”选择。"_s};
    return {};
}

} // namespace quilla
