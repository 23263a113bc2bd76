#include "database/test_base.h"
#include "db/error_of.h"
#include "platform/db/sqlite/sqlite_driver.h"
#include "source_dir.h"
#include "support/field_texts.h"

#include <QProcess>

using namespace quilla;

/// Libraries of earlier programs, and of programs with another ICU. The fixture was made by the last program
/// whose texts stood in the order of their code points.
class TestUpgrade : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder = std::make_unique<QTemporaryDir>();
        QVERIFY(QFile::copy(QStringLiteral(QUILLA_SOURCE_DIR "/tests/database/library_v1.db"), file()));
        QVERIFY(QFile::setPermissions(file(), QFile::ReadOwner | QFile::WriteOwner));
    }

    void earlierLibrary()
    {
        QCOMPARE(run({u"check"_s}), 0);
        QCOMPARE(run({u"backup"_s, folder->filePath(u"saved.db"_s)}), 0);
        QCOMPARE(run({u"demo"_s}), 2);
        QVERIFY2(output.contains(u"quilla-db upgrade"_s), qPrintable(output));
        const SystemClock clock;
        {
            const SqliteDriver desk(file(), clock, SqliteDriver::As::AnyFile);
            desk.handle().run("begin; select * from dzk");
            QCOMPARE(run({u"upgrade"_s}), 2);
            QVERIFY2(output.contains(u"所有桌面"_s), qPrintable(output));
        }
        QCOMPARE(run({u"upgrade"_s}), 0);
        QCOMPARE(run({u"check"_s}), 0);
        QStringList names;
        readEmbedded(file(), librarySchema(), clock, [&](Connection& library) {
            Recordset row = library.open(u"select name from dzk where readercode like 'A%' order by name");
            names = fieldTexts(row, u"name");
        });
        QCOMPARE(names.join(u'|'), u"(老)李|阿明|啊哈|重庆|王 五|张三|Émile|emile|ｗａｎｇ|Zoe"_s);
        QCOMPARE(run({u"upgrade"_s}), 0);
        QVERIFY2(output.contains(u"不需要升级"_s), qPrintable(output));
        QVERIFY(QFile::remove(file()));
        QVERIFY(QFile::rename(folder->filePath(u"ku-v1.db"_s), file()));
        QCOMPARE(run({u"upgrade"_s}), 0);
    }

    void killedAnywhere()
    {
        for (int after = 0; after < 120; after += 15) {
            run({u"upgrade"_s}, after);
            QCOMPARE(run({u"check"_s}), 0);
        }
        QCOMPARE(run({u"upgrade"_s}), 0);
        QCOMPARE(run({u"check"_s}), 0);
    }

    void anotherIcu()
    {
        TestBase base([](Connection& library) {
            for (const QStringView name : {u"张三", u"阿明", u"Zoe"})
                library.execute(u"insert into dzk(readercode,name) values('1','%1')"_s.arg(name));
        });
        base.connection = {};
        base.factory.drain();
        const SystemClock clock;
        auto other = std::make_unique<SqliteDriver>(base.file, clock, SqliteDriver::As::AnyFile);
        QCOMPARE(registerOrder(other->handle().get(), TextOrder::CodePoint), SQLITE_OK);
        other->handle().run("reindex; update qj_order set version='other'");
        const QString text = u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, base.file);
        QCOMPARE(errorOf([&] { base.factory.open(text); }), ErrorNumber::InUse);
        other.reset();
        base.connection = base.factory.open(text);
        QCOMPARE(base.rows(u"select name from dzk where name>'' order by name"), u"阿明\n张三\nZoe"_s);
        QVERIFY(checkEmbedded(base.file).isEmpty());
    }

private:
    QString file() const { return folder->filePath(u"ku.db"_s); }

    int run(const QStringList& arguments, int killAfter = -1)
    {
        QProcess tool;
        tool.setProcessChannelMode(QProcess::MergedChannels);
        tool.start(QString::fromUtf8(QUILLA_DB_TOOL), arguments + QStringList {u"--file"_s, file()});
        if (killAfter >= 0 && !tool.waitForFinished(killAfter)) tool.kill();
        tool.waitForFinished();
        output = QString::fromUtf8(tool.readAll());
        return tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1;
    }

    std::unique_ptr<QTemporaryDir> folder;
    QString output;
};

QTEST_GUILESS_MAIN(TestUpgrade)
#include "test_upgrade.moc"
