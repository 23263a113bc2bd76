#pragma once

#include "platform/core/settings.h"

#include <QDate>

#include <optional>
#include <vector>

namespace quilla {

/// Where the backups of a library go: the folder that was set, else one beside the library.
QString backupFolder(const SettingsStore& settings, const QString& library);

/// Makes the folder when it is missing. Throws `Error` when nothing can be written there.
void setBackupFolder(SettingsStore& settings, const QString& folder);

/// Why the last backup failed; empty when it succeeded or none was made yet.
QString backupFailure(const SettingsStore& settings);
void noteBackupFailure(SettingsStore& settings, const QString& why);

/// What one backup needs to know. It is made in a thread of its own.
struct BackupJob {
    QString library;
    QString folder;
    bool mayMakeFolder = false; ///< a folder that somebody set is there, or its disk is not connected
    QDate today;
};

/// The backup that the library behind this text needs today; nullopt when it has one and on a server, where
/// the administrator's own backups are made.
std::optional<BackupJob> dueBackup(
    const SettingsStore& settings, const QString& connectionText, const QDate& today);

/// Whether another desk is at it, also one that was closed and finishes its backup.
bool isBeingMade(const BackupJob& job);

/// Makes the copy, checks it, and removes those that need not be kept. Nothing happens when another desk made
/// the day's backup meanwhile or is making it. Throws `Error`; older backups stand as they were then.
void makeBackup(const BackupJob& job);

struct Backup {
    QString file;
    QDate day;
};

/// The backups of a library, the newest first.
std::vector<Backup> backupsOf(const SettingsStore& settings, const QString& library);

/// Puts the backup in the place of the library; no desk may have it open. What stood there is kept under a
/// new name in the same folder, which is returned; empty when nothing stood there. Throws `Error` and leaves
/// all as it was when the backup is damaged or the library in use. `group`: who else may use a library that
/// is new there; who may use one that is replaced stays as it was.
QString restoreBackup(const QString& backup, const QString& library, const QString& group = {});

} // namespace quilla
