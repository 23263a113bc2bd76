#include "backup/backup_names.h"
#include "backup/daily_backup.h"
#include "database/test_base.h"
#include "db/error_of.h"
#include "platform/core/private_files.h"
#include "support/file_mode.h"
#include "support/memory_settings.h"
#include "support/write_file.h"

#include <QLockFile>

using namespace quilla;

namespace {

/// A library with one type of reader, its desk's settings and clock.
struct Desk {
    Desk() { base.connection.execute(u"insert into dzlx(readerclass) values('教师')"); }

    /// What the desk reports at its start, and after the backup that it then makes.
    QString told()
    {
        DailyBackup backup(settings, clock);
        backup.start(text());
        return backup.failureBefore();
    }
    QString text() const { return u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, base.file); }
    QString folder() const { return backupFolder(settings, base.file); }
    QStringList files() const { return QDir(folder()).entryList(QDir::Files); }

    TestBase base;
    MemorySettings settings;
    FixedClock clock {{QDate(2026, 1, 1)}};
};

} // namespace

class TestBackup : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keepsDaysWeeksAndMonths();
    void makesOneADay();
    void tellsAFailure();
    void restores();
};

/// Every fourth day the desk stays closed.
void TestBackup::keepsDaysWeeksAndMonths()
{
    QStringList names {
        u"library-3f09ac-2026-01-01.db"_s, u"readers.csv"_s}; // another library's, and no backup
    const QStringList others = names;
    QDate day(2026, 1, 1);
    for (int i = 0; i < 400; ++i, day = day.addDays(1)) {
        if (i % 4 == 0) continue;
        names += backupName(u"library"_s, day);
        for (const QString& expired : expiredBackups(u"library"_s, names, day))
            names.removeAll(expired);
    }
    const QStringList days {u"2026-03-31"_s, u"2026-04-30"_s, u"2026-05-31"_s, u"2026-06-29"_s,
        u"2026-07-31"_s, u"2026-08-31"_s, u"2026-09-29"_s, u"2026-10-31"_s, u"2026-11-30"_s, u"2026-12-30"_s,
        u"2027-01-17"_s, u"2027-01-23"_s, u"2027-01-27"_s, u"2027-01-29"_s, u"2027-01-30"_s, u"2027-01-31"_s,
        u"2027-02-02"_s, u"2027-02-03"_s, u"2027-02-04"_s};
    QStringList kept = others;
    for (const QString& each : days)
        kept += u"library-%1.db"_s.arg(each);
    QCOMPARE(names, kept);
}

void TestBackup::makesOneADay()
{
    Desk desk;
    makePrivateFolder(desk.folder());
    const QString stem = backupStem(desk.base.file);
    const QString file = desk.folder() + u'/' + backupName(stem, desk.clock.moment.date);
    {
        QLockFile otherDesk(desk.folder() + u'/' + stem + u".lock"_s);
        QVERIFY(otherDesk.tryLock());
        noteBackupFailure(desk.settings, u"not ended yet"_s);
        QCOMPARE(desk.told(), QString());
        QCOMPARE(backupFailure(desk.settings), u"not ended yet"_s); // stands when the other desk is killed
        QVERIFY(!QFile::exists(file));
    }
    QFile left(desk.folder() + u'/' + backupName(stem, desk.clock.moment.date.addDays(-1)) + u".part"_s);
    QVERIFY(left.open(QIODevice::WriteOnly));
    writeFile(desk.folder() + u'/' + stem + u".lock"_s, {}); // its maker was killed before it wrote into it
    desk.told();
    QCOMPARE(desk.files(), QStringList {backupName(stem, desk.clock.moment.date)});
    QCOMPARE(modeOf(file), 0600u);
    const QDateTime made = QFileInfo(file).lastModified();
    desk.told();
    QCOMPARE(QFileInfo(file).lastModified(), made);
    QVERIFY(!dueBackup(desk.settings, u"DSN=elsewhere"_s, desk.clock.moment.date));
}

void TestBackup::tellsAFailure()
{
    Desk desk;
    const QString disk = desk.base.folder.filePath(u"disk"_s);
    setBackupFolder(desk.settings, disk);
    QVERIFY(QDir().rename(disk, disk + u"-away"_s));
    QCOMPARE(desk.told(), QString());
    QVERIFY(desk.told().contains(disk)); // a folder that somebody set is never made: the disk may be away
    QVERIFY(!QFile::exists(disk));
    QVERIFY(QDir().rename(disk + u"-away"_s, disk));
    QVERIFY(!desk.told().isEmpty());
    QCOMPARE(desk.told(), QString());
}

void TestBackup::restores()
{
    Desk desk;
    desk.told();
    const QString backup = backupsOf(desk.settings, desk.base.file).at(0).file;
    desk.base.connection.execute(u"delete from dzlx");
    desk.base.connection.close();
    desk.base.factory.drain();
    const QString garbage = desk.base.folder.filePath(u"garbage.db"_s);
    writeFile(garbage, "garbage");
    for (const QString& unfit : {garbage, desk.base.file, u"/nowhere.db"_s})
        QVERIFY(errorOf([&] { restoreBackup(unfit, desk.base.file); }) != 0);
    const QString link = desk.base.folder.filePath(u"link.db"_s);
    QVERIFY(QFile::link(desk.base.file, link));
    ::chmod(QFile::encodeName(desk.base.file).constData(), 0660); // in a folder that is nobody else's
    const QString kept = restoreBackup(backup, link);
    QVERIFY(QFileInfo(link).isSymLink());
    QCOMPARE(modeOf(desk.base.file), 0660u);
    const auto typesIn = [&](const QString& file) {
        desk.base.connection = desk.base.factory.open(u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file));
        return desk.base.rows(u"select readerclass from dzlx");
    };
    QVERIFY(!QFile::exists(kept + u"-journal"_s));
    QCOMPARE(typesIn(desk.base.file), u"教师"_s);
    QCOMPARE(typesIn(kept), QString());
    QVERIFY(QFile::remove(desk.base.file));
    QCOMPARE(backupsOf(desk.settings, desk.base.file).size(), 1);
}

QTEST_GUILESS_MAIN(TestBackup)
#include "test_backup.moc"
