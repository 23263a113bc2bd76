#include "backup/backup_names.h"

#include "platform/core/text.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QMap>
#include <QSet>
#include <QSysInfo>

namespace quilla {

namespace {

const QString Ending = u".db"_s;

QDate monday(const QDate& day)
{
    return day.addDays(1 - day.dayOfWeek());
}

QDate firstOfMonth(const QDate& day)
{
    return QDate(day.year(), day.month(), 1);
}

/// Adds the last of `days`, newest first, in each of the newest `count` periods.
void keepLastOfEach(QDate (*period)(const QDate&), int count, const QList<QDate>& days, QSet<QDate>& kept)
{
    QSet<QDate> seen;
    for (const QDate& day : days) {
        if (seen.contains(period(day))) continue;
        if (seen.size() == count) return;
        seen.insert(period(day));
        kept.insert(day);
    }
}

/// The same whether or not the file exists: the backups matter most when the library was deleted.
QString folderOf(const QFileInfo& library)
{
    return library.exists() ? library.canonicalPath() : QFileInfo(library.absolutePath()).canonicalFilePath();
}

QSet<QDate> keptOf(const QList<QDate>& days)
{
    QSet<QDate> kept;
    keepLastOfEach([](const QDate& day) { return day; }, 7, days, kept);
    keepLastOfEach(monday, 4, days, kept);
    keepLastOfEach(firstOfMonth, 12, days, kept);
    return kept;
}

} // namespace

QString backupStem(const QString& library)
{
    const QFileInfo file(library);
    const QByteArray place = QSysInfo::machineUniqueId() + folderOf(file).toUtf8();
    const QByteArray hash = QCryptographicHash::hash(place, QCryptographicHash::Sha1).toHex();
    return file.completeBaseName() + u'-' + QString::fromLatin1(hash.first(6));
}

QString backupName(const QString& stem, const QDate& day)
{
    return stem + u'-' + day.toString(Qt::ISODate) + Ending;
}

bool isUnfinishedBackup(const QString& stem, const QString& name)
{
    return name.startsWith(stem + u'-') && name.contains(Ending + u".part"_s);
}

QDate backupDay(const QString& stem, const QString& name)
{
    const QDate day = QDate::fromString(name.mid(stem.size() + 1, 10), Qt::ISODate);
    return day.isValid() && name == backupName(stem, day) ? day : QDate();
}

QStringList expiredBackups(const QString& stem, const QStringList& names, const QDate& today)
{
    QMap<QDate, QString> backups;
    for (const QString& name : names) {
        const QDate day = backupDay(stem, name);
        if (day.isValid() && day <= today) backups.insert(day, name);
    }
    QList<QDate> newestFirst = backups.keys();
    std::reverse(newestFirst.begin(), newestFirst.end());
    for (const QDate& day : keptOf(newestFirst))
        backups.remove(day);
    return backups.values();
}

} // namespace quilla
