#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/settings.h"
#include "platform/core/text.h"
#include "support/cases.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quilla;

class TestCore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void datesAreRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("read"); // empty: no date
        const auto row = [](const QString& text, const QString& read) {
            QTest::newRow(qPrintable(text)) << text << read;
        };
        row(u"2003-01-05"_s, u"2003-01-05T00:00:00.000"_s);
        row(u"2003-1-5"_s, u"2003-01-05T00:00:00.000"_s);
        row(u"2003/01/05"_s, u"2003-01-05T00:00:00.000"_s);
        row(u"20030105"_s, u"2003-01-05T00:00:00.000"_s);
        row(u" 2003-01-05 8:05:03 "_s, u"2003-01-05T08:05:03.000"_s);
        row(u"2003-01-05 23:59:59.9876"_s, u"2003-01-05T23:59:59.987"_s);
        row(u"2004-02-29T12:00"_s, u"2004-02-29T12:00:00.000"_s);
        for (const QString& bad : {u""_s, u"2003"_s, u"2003-02-29"_s, u"2003-13-01"_s, u"03-01-05"_s,
                 u"2003-01/05"_s, u"2003-01-05x"_s, u"2003-01-05 24:00"_s, u"2003-01-05 8"_s, u"200301051"_s,
                 u"２００３-01-05"_s, u"-2003-01-05"_s})
            row(bad, {});
    }

    void datesAreRead()
    {
        QFETCH(QString, text);
        QFETCH(QString, read);
        const auto date = readDate(text);
        QCOMPARE(date ? date->toString(u"yyyy-MM-ddTHH:mm:ss.zzz") : QString(), read);
    }

    void localeText()
    {
        QCOMPARE(localeDateText(QDateTime(QDate(2004, 3, 9), QTime(8, 5, 3))), u"2004-03-09 8:05:03"_s);
        QCOMPARE(localeDateText(QDate(2004, 3, 9).startOfDay()), u"2004-03-09"_s);
        QCOMPARE(localeDateText(QDateTime()), QString());
    }

    void textsCompare_data()
    {
        cases<QString, QString, bool>({
            {"case", {u"abC1"_s, u"ABc1"_s, true}},
            {"blanks behind", {u"有效"_s, u"有效  "_s, true}},
            {"blank in front", {u" a"_s, u"a"_s, false}},
            {"tab behind", {u"a\t"_s, u"a"_s, false}},
            {"accented case", {u"É"_s, u"é"_s, true}},
            {"only blanks", {u"  "_s, u""_s, true}},
            {"full width digit", {u"１"_s, u"1"_s, false}},
        });
    }

    void textsCompare()
    {
        const auto [left, right, same] = given<QString, QString, bool>();
        QCOMPARE(sameText(left, right), same);
        QCOMPARE(sameText(right, left), same);
    }

    void lastErrorKeepsTheLast()
    {
        LastError error;
        QVERIFY(!error.attempt([] { throw Error(7, u"a"_s, u"first"_s); }));
        QCOMPARE(error.attempt([] { return 5; }).value_or(0), 5);
        QCOMPARE(error.number(), 7);
        QCOMPARE(error.attempt([]() -> int { throw Error(8, u"b"_s, u"second"_s); }).value_or(-1), -1);
        QCOMPARE(error.text(), u"second"_s);
        error.clear();
        QVERIFY(!error.isSet());
    }

    void settingsArePrivate()
    {
        QTemporaryDir folder;
        const QString secret = u"PROVIDER=MSDASQL;DSN=a;UID=b;PWD=a\"';=,%\\n 密码;"_s;
        FileSettings(folder.path()).set(u"青简文库"_s, u"Setting"_s, u"QuillaPass"_s, secret);
        FileSettings again(folder.path());
        QCOMPARE(again.get(u"青简文库"_s, u"Setting"_s, u"QuillaPass"_s, u"none"_s), secret);
        QCOMPARE(again.get(u"青简文库"_s, u"Setting"_s, u"Other"_s, u"none"_s), u"none"_s);
        const auto secretFile = [&] {
            return QFile(again.fileOf(u"青简文库"_s)).permissions() & ~QFileDevice::Permissions(0x7000);
        };
        QCOMPARE(secretFile(), QFileDevice::ReadUser | QFileDevice::WriteUser);
        // A file that somebody opened to all is private again after the next write.
        QFile::setPermissions(again.fileOf(u"青简文库"_s), QFileDevice::Permissions(0x6644));
        again.set(u"青简文库"_s, u"Setting"_s, u"QuillaPass"_s, u"x"_s);
        QCOMPARE(secretFile(), QFileDevice::ReadUser | QFileDevice::WriteUser);
    }

    void settingsSeeAnotherProcess()
    {
        QTemporaryDir folder;
        FileSettings mine(folder.path());
        FileSettings other(folder.path());
        QCOMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"none"_s);
        other.set(u"A"_s, u"S"_s, u"K"_s, u"1"_s);
        QCOMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"1"_s);
        other.set(u"A"_s, u"S"_s, u"K"_s, u"2"_s);
        QCOMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"2"_s);
        QVERIFY(QFile::remove(mine.fileOf(u"A"_s)));
        QCOMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"none"_s);
    }

    void unwritableSettingsAreAnError()
    {
        QTemporaryDir folder;
        QFile blocking(folder.filePath(u"A"_s));
        QVERIFY(blocking.open(QIODevice::WriteOnly));
        FileSettings settings(folder.path());
        QVERIFY_THROWS_EXCEPTION(Error, settings.set(u"A"_s, u"S"_s, u"K"_s, u"1"_s));
    }
};

QTEST_GUILESS_MAIN(TestCore)
#include "test_core.moc"
