#include "quilla-db/backup_commands.h"

#include "backup/backup_ops.h"
#include "database/library_schema.h"
#include "platform/core/dates.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/server_backup.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QStorageInfo>

namespace quilla {

namespace {

Error fault(const QString& text)
{
    return Error(5, u"quilla-db"_s, text);
}

void tell(const std::vector<Backup>& backups, QTextStream& out)
{
    for (std::size_t i = 0; i < backups.size(); ++i) {
        const QFileInfo file(backups[i].file);
        out << u"%1  %2  %3  %4\n"_s.arg(i + 1, 3).arg(isoDate(backups[i].day),
            QLocale::c().formattedDataSize(file.size()), QDir::toNativeSeparators(backups[i].file));
    }
}

/// Empty when the operator gives up.
QString chosenBackup(const QString& library, QTextStream& out)
{
    const std::vector<Backup> backups = backupsOf(FileSettings(), library);
    if (backups.empty()) throw fault(u"备份文件夹里没有这个数据库的备份。请写明备份文件：restore 文件"_s);
    tell(backups, out);
    out << u"恢复哪一个？请输入序号，直接按回车则不恢复："_s;
    out.flush();
    const QString answer = QTextStream(stdin).readLine().trimmed();
    if (answer.isEmpty()) return {};
    bool isNumber = false;
    const int number = answer.toInt(&isNumber);
    if (!isNumber || number < 1 || number > int(backups.size())) throw fault(u"没有这个序号："_s + answer);
    return backups[std::size_t(number - 1)].file;
}

Outcome restoreFile(const Arguments& arguments, QTextStream& out)
{
    const Target& target = arguments.target;
    const QString file = arguments.file.isEmpty() ? chosenBackup(*target.file, out) : arguments.file;
    if (file.isEmpty()) {
        out << u"没有恢复。\n"_s;
        return Outcome::Done;
    }
    const QString kept = restoreBackup(file, *target.file, target.group);
    out << u"已恢复："_s << target.name() << u'\n';
    if (!kept.isEmpty()) out << u"原来的数据库保存在："_s << kept << u'\n';
    return Outcome::Done;
}

} // namespace

Outcome backupTo(const Arguments& arguments, QTextStream& out)
{
    const Target& target = arguments.target;
    if (target.file)
        backupEmbedded(*target.file, arguments.file, librarySchema());
    else
        backupServer(ConnectionItems(target.connectionText), arguments.file);
    out << u"已备份到："_s << arguments.file << u'\n';
    return Outcome::Done;
}

Outcome restoreFrom(const Arguments& arguments, QTextStream& out)
{
    if (arguments.target.file) return restoreFile(arguments, out);
    if (arguments.file.isEmpty()) throw fault(u"restore 需要一个文件名。"_s);
    restoreServer(ConnectionItems(arguments.target.connectionText), arguments.file);
    out << u"已恢复："_s << arguments.target.name() << u'\n';
    return Outcome::Done;
}

Outcome backupFolderOf(const Arguments& arguments, QTextStream& out)
{
    if (!arguments.target.file) throw fault(u"数据库服务器的备份由管理员安排，见 backup。"_s);
    FileSettings settings;
    if (!arguments.file.isEmpty()) setBackupFolder(settings, arguments.file);
    const QString folder = backupFolder(settings, *arguments.target.file);
    out << u"每天的备份保存在："_s << QDir::toNativeSeparators(folder) << u'\n';
    if (QStorageInfo(folder) == QStorageInfo(QFileInfo(*arguments.target.file).absolutePath()))
        out << u"它和数据库在同一个磁盘上，磁盘损坏时会一起丢失。建议换到另一个磁盘。\n"_s;
    return Outcome::Done;
}

} // namespace quilla
