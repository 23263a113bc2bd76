#pragma once

#include <QDate>
#include <QStringList>

namespace quilla {

/// What the names of a library's backups begin with: the library's own name, and a short code for its folder
/// and machine, so that several libraries may share a folder of backups.
QString backupStem(const QString& library);

/// The name of the day's backup: "quilla-3f09ac-2026-11-25.db".
QString backupName(const QString& stem, const QDate& day);

/// Whether a backup of this stem left the file behind when its process was killed.
bool isUnfinishedBackup(const QString& stem, const QString& name);

/// The day in the name of a backup of this stem; invalid for any other name.
QDate backupDay(const QString& stem, const QString& name);

/// The names, among the backups of `stem`, that need not be kept: what is kept is the last backup of each of
/// the newest 7 days, 4 weeks (from Monday) and 12 months that have one. A library that was closed for a
/// summer loses none. Names of other files, and days after `today`, which a wrong clock made, are left alone.
QStringList expiredBackups(const QString& stem, const QStringList& names, const QDate& today);

} // namespace quilla
