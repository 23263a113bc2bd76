#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/settings.h"
#include "platform/core/text.h"
#include "support/file_mode.h"
#include "support/write_file.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quilla;

class TestCore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void datesAreRead()
    {
        const Moment day {QDate(2003, 1, 5)};
        const std::pair<QString, Moment> dates[] {{u"2003-01-05"_s, day}, {u"2003-1-5"_s, day},
            {u"2003/01/05"_s, day}, {u"20030105"_s, day},
            {u" 2003-01-05 8:05:03 "_s, {day.date, QTime(8, 5, 3)}},
            {u"2003-01-05 23:59:59.9876"_s, {day.date, QTime(23, 59, 59, 987)}},
            {u"2004-02-29T12:00"_s, {QDate(2004, 2, 29), QTime(12, 0)}}};
        for (const auto& [text, moment] : dates)
            QVERIFY2(readDate(text) == moment, qPrintable(text));
        for (const QString& bad : {u""_s, u"2003"_s, u"2003-02-29"_s, u"2003-13-01"_s, u"03-01-05"_s,
                 u"2003-01/05"_s, u"2003-01-05x"_s, u"2003-01-05 24:00"_s, u"2003-01-05 8"_s, u"200301051"_s,
                 u"２００３-01-05"_s, u"\t2003-01-05"_s, u"-2003-01-05"_s})
            QVERIFY2(!readDate(bad), qPrintable(bad));
    }

    void localeText()
    {
        QCOMPARE(localeDateText({QDate(2004, 3, 9), QTime(8, 5, 3)}), u"2004-03-09 8:05:03"_s);
        QCOMPARE(localeDateText({QDate(2004, 3, 9)}), u"2004-03-09"_s);
    }

    void textsCompare()
    {
        const std::tuple<QString, QString, bool> pairs[] {{u"abC1"_s, u"ABc1"_s, true},
            {u"有效"_s, u"有效  "_s, true}, {u" a"_s, u"a"_s, false}, {u"a\t"_s, u"a"_s, false},
            {u"É"_s, u"é"_s, true}, {u"  "_s, u""_s, true}, {u"１"_s, u"1"_s, true}, {u"e"_s, u"é"_s, false},
            {u"a\u3000"_s, u"a"_s, false}};
        for (const auto& [left, right, same] : pairs)
            QVERIFY2(sameText(left, right) == same && sameText(right, left) == same, qPrintable(left));
    }

    void blanksAreTheCharacter32()
    {
        const QString kept[] {u"\ta\t"_s, u"\u3000a\u3000"_s, u"\u00a0a b\n"_s};
        for (const QString& text : kept) {
            QCOMPARE(trimBlanks(u"  "_s + text + u"  "_s), text);
            QVERIFY(!isBlank(text.left(1)));
        }
        QVERIFY(isBlank(u"   "_s) && isBlank(QString()));
        QCOMPARE(trimBlanks(u"   "_s), QString());
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
        QCOMPARE(modeOf(again.fileOf(u"青简文库"_s)), 0600u);
        // A file that somebody opened to all is private again after the next write.
        QFile::setPermissions(again.fileOf(u"青简文库"_s), QFileDevice::Permissions(0x6644));
        again.set(u"青简文库"_s, u"Setting"_s, u"QuillaPass"_s, u"x"_s);
        QCOMPARE(modeOf(again.fileOf(u"青简文库"_s)), 0600u);
    }

    void settingsSeeAnotherProcess()
    {
        QTemporaryDir folder;
        FileSettings mine(folder.path());
        FileSettings other(folder.path());
        QCOMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"none"_s);
        other.set(u"A"_s, u"S"_s, u"K"_s, u"1"_s);
        QTRY_COMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"1"_s);
        other.set(u"A"_s, u"S"_s, u"K"_s, u"2"_s);
        QTRY_COMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"2"_s);
        QVERIFY(QFile::remove(mine.fileOf(u"A"_s)));
        QTRY_COMPARE(mine.get(u"A"_s, u"S"_s, u"K"_s, u"none"_s), u"none"_s);
    }

    void damagedSettingsAreKept()
    {
        QTemporaryDir folder;
        FileSettings settings(folder.path());
        settings.set(u"A"_s, u"S"_s, u"K"_s, u"1"_s);
        QCOMPARE(settings.mend(u"A"_s), QString());
        const QByteArray damaged = "[S]\nK=2\nno value\n";
        writeFile(settings.fileOf(u"A"_s), damaged);
        QTRY_COMPARE(settings.get(u"A"_s, u"S"_s, u"K"_s, {}), u"2"_s);
        settings.set(u"A"_s, u"S"_s, u"Other"_s, u"3"_s);
        QFile kept(settings.fileOf(u"A"_s) + u".damaged"_s);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), damaged);
        QCOMPARE(
            settings.get(u"A"_s, u"S"_s, u"K"_s, {}) + settings.get(u"A"_s, u"S"_s, u"Other"_s, {}), u"23"_s);
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
