#include "backup/backup_ops.h"

#include "backup/backup_names.h"
#include "database/library_schema.h"
#include "frame/sublib.h"
#include "platform/core/lock_file.h"
#include "platform/core/private_files.h"
#include "platform/db/embedded.h"
#include "platform/db/replace_embedded.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryFile>

#include <algorithm>

namespace quilla {

namespace {

const QString Section = u"Backup"_s;
const QString FolderKey = u"Folder"_s;
const QString FailureKey = u"Failure"_s;

Error fault(const QString& text)
{
    return Error(75, u"backup"_s, text);
}

QString kept(const SettingsStore& settings, const QString& key)
{
    return settings.get(StoredText::Application.toString(), Section, key, {});
}

void keep(SettingsStore& settings, const QString& key, const QString& value)
{
    settings.set(StoredText::Application.toString(), Section, key, value);
}

/// Desks that share a library share the folder of its backups too, also one from the time before; each backup
/// is its maker's alone.
void makeFolder(const BackupJob& job)
{
    const QFileInfo library(job.library);
    if (library.permission(QFile::WriteGroup))
        UserGroup(library.group()).shareFolder(job.folder, UserGroup::Standing::IsShared);
    else
        makePrivateFolder(job.folder);
}

void requireFolder(const BackupJob& job)
{
    if (job.mayMakeFolder) makeFolder(job);
    if (QFileInfo(job.folder).isDir()) return;
    const QString why = job.mayMakeFolder ? u"不能建立备份文件夹，请检查它上一级文件夹的权限和磁盘空间："_s
                                          : u"没有备份文件夹，请检查磁盘是否已连接："_s;
    throw fault(why + QDir::toNativeSeparators(job.folder));
}

void removeUnfinished(const QString& stem, const BackupJob& job)
{
    QDir folder(job.folder);
    for (const QString& name : folder.entryList(QDir::Files))
        if (isUnfinishedBackup(stem, name)) folder.remove(name);
}

QString lockOf(const BackupJob& job)
{
    return job.folder + u'/' + backupStem(job.library) + u".lock"_s;
}

/// Without an end a lock that nobody holds any more would keep all backups from being made, without a word.
constexpr std::chrono::hours LongestBackup {24};

/// False when another desk is at the backups of this library.
bool take(QLockFile& turn, const BackupJob& job)
{
    if (takeLock(turn, LongestBackup)) return true;
    if (turn.error() == QLockFile::LockFailedError) return false;
    throw fault(u"备份文件夹不能写入，请检查权限和磁盘空间："_s + QDir::toNativeSeparators(job.folder));
}

void removeExpired(const QString& stem, const BackupJob& job)
{
    const QDir folder(job.folder);
    for (const QString& name : expiredBackups(stem, folder.entryList(QDir::Files), job.today))
        QFile::remove(folder.filePath(name));
}

/// "quilla-replaced-2026-11-25.db", with a number when there is one.
QString nameToKeep(const QString& library)
{
    const QFileInfo file(library);
    const QString stem = u"%1/%2-replaced-%3"_s.arg(
        file.absolutePath(), file.completeBaseName(), QDate::currentDate().toString(Qt::ISODate));
    QString name = stem + u".db"_s;
    for (int number = 2; QFile::exists(name); ++number)
        name = u"%1-%2.db"_s.arg(stem).arg(number);
    return name;
}

} // namespace

QString backupFolder(const SettingsStore& settings, const QString& library)
{
    const QString set = kept(settings, FolderKey);
    return set.isEmpty() ? QFileInfo(library).absolutePath() + u"/backups"_s : set;
}

void setBackupFolder(SettingsStore& settings, const QString& folder)
{
    const QString path = QDir::cleanPath(QDir::current().absoluteFilePath(folder));
    if (!makePrivateFolder(path) || !QTemporaryFile(path + u"/XXXXXX"_s).open())
        throw fault(u"不能在这个文件夹中写入，请换一个："_s + QDir::toNativeSeparators(path));
    keep(settings, FolderKey, path);
}

QString backupFailure(const SettingsStore& settings)
{
    return kept(settings, FailureKey);
}

void noteBackupFailure(SettingsStore& settings, const QString& why)
{
    if (backupFailure(settings) != why) keep(settings, FailureKey, why);
}

std::optional<BackupJob> dueBackup(
    const SettingsStore& settings, const QString& connectionText, const QDate& today)
{
    const auto library = embeddedFileOf(ConnectionItems(connectionText));
    if (!library || !QFile::exists(*library)) return {};
    const QString folder = backupFolder(settings, *library);
    if (QFile::exists(folder + u'/' + backupName(backupStem(*library), today))) return {};
    return BackupJob {*library, folder, kept(settings, FolderKey).isEmpty(), today};
}

bool isBeingMade(const BackupJob& job)
{
    QLockFile turn(lockOf(job));
    return !takeLock(turn, LongestBackup) && turn.error() == QLockFile::LockFailedError;
}

void makeBackup(const BackupJob& job)
{
    requireFolder(job);
    const QString stem = backupStem(job.library);
    QLockFile turn(lockOf(job));
    if (!take(turn, job)) return;
    const QString file = job.folder + u'/' + backupName(stem, job.today);
    if (QFile::exists(file)) return;
    removeUnfinished(stem, job);
    backupEmbedded(job.library, file, librarySchema());
    removeExpired(stem, job);
}

std::vector<Backup> backupsOf(const SettingsStore& settings, const QString& library)
{
    const QString stem = backupStem(library);
    const QDir folder(backupFolder(settings, library));
    std::vector<Backup> backups;
    for (const QString& name : folder.entryList(QDir::Files))
        if (const QDate day = backupDay(stem, name); day.isValid())
            backups.push_back({folder.filePath(name), day});
    std::ranges::sort(backups, [](const Backup& a, const Backup& b) { return a.day > b.day; });
    return backups;
}

QString restoreBackup(const QString& backup, const QString& library, const QString& group)
{
    if (!QFile::exists(backup)) throw fault(u"没有这个备份文件："_s + QDir::toNativeSeparators(backup));
    const QString standing = QFileInfo(library).canonicalFilePath(); // a link goes on leading to its file
    if (standing.isEmpty()) {
        backupEmbedded(backup, library, librarySchema(), group);
        return {};
    }
    const QString keptAs = nameToKeep(standing);
    replaceEmbedded(standing, backup, keptAs, librarySchema());
    return keptAs;
}

} // namespace quilla
