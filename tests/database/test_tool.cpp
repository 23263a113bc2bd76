#include "database/test_base.h"
#include "source_dir.h"
#include "support/file_mode.h"
#include "support/write_file.h"

#include <QProcess>

using namespace quilla;

/// The command as an operator runs it.
class TestTool : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void createsOnce()
    {
        const QString file = folder.filePath(u"new/once.db"_s);
        QCOMPARE(run({u"create"_s, u"--file"_s, file, u"--operator"_s, u"O'Hara"_s}), 0);
        QVERIFY2(output.contains(file), qPrintable(output));
        QCOMPARE(run({u"create"_s, u"--file"_s, file}), 2);
        QVERIFY2(output.contains(file), qPrintable(output));
        QCOMPARE(run({u"check"_s, u"--file"_s, file}), 0);
        QCOMPARE(run({u"demo"_s, u"--file"_s, file, u"--today"_s, u"2003-10-01"_s}), 0);
        QCOMPARE(run({u"check"_s, u"--file"_s, file}), 0);
        QCOMPARE(run({u"demo"_s, u"--file"_s, file, u"--today"_s, u"2003-10-01"_s}), 2);
        QCOMPARE(run({u"check"_s, u"--file"_s, file}), 0);
    }

    /// A name that no text column takes makes the very last statement fail.
    void leavesNothingBehind()
    {
        const QString file = folder.filePath(u"half.db"_s);
        QCOMPARE(run({u"create"_s, u"--file"_s, file, u"--operator"_s, QString(100, u'长')}), 2);
        QCOMPARE(QDir(folder.path()).entryList({u"half*"_s}), QStringList());
    }

    /// On disks of half to twice the file's size it is made whole or not at all. Each disk is gone with its
    /// process, which copies out what stood there.
    void fullDisk()
    {
        if (run(u"unshare"_s, {u"-rm"_s, u"true"_s}) != 0) QSKIP("needs user namespaces");
        TestBase base;
        const QString disk = folder.filePath(u"disk"_s);
        const QString file = disk + u"/new.db"_s;
        const QString onDisk
            = u"mount -t tmpfs -o size=$1 disk $2 && { \"${@:4}\"; rc=$?; cp -r $2/. $3; exit $rc; }"_s;
        QVERIFY(QDir().mkdir(disk));
        const QStringList commands[] {{u"create"_s, u"--file"_s, file},
            {u"copy"_s, u"--file"_s, base.file, u"--connection"_s,
                u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file)}};
        for (const QStringList& command : commands)
            for (const int percent : {50, 98, 102, 120, 160, 200}) {
                QTemporaryDir left;
                const QString size = QString::number(QFileInfo(base.file).size() * percent / 100);
                const int result = run(u"unshare"_s,
                    QStringList {u"-rm"_s, u"bash"_s, u"-c"_s, onDisk, u"bash"_s, size, disk, left.path(),
                        QString::fromUtf8(QUILLA_DB_TOOL)}
                        + command);
                const QStringList files = QDir(left.path()).entryList(QDir::Files);
                QCOMPARE(result, percent < 100 ? 2 : 0);
                QCOMPARE(files, result == 0 ? QStringList {u"new.db"_s} : QStringList());
                if (result == 0) QCOMPARE(run({u"check"_s, u"--file"_s, left.filePath(u"new.db"_s)}), 0);
            }
    }

    void sharesWithAGroup()
    {
        const QString group = QFileInfo(folder.path()).group();
        const QString shared = folder.filePath(u"shared/x.db"_s);
        QCOMPARE(run({u"create"_s, u"--file"_s, shared, u"--group"_s, group}), 0);
        QCOMPARE(modeOf(shared), 0660u);
        QCOMPARE(modeOf(folder.filePath(u"shared"_s)), 02770u);
        for (const auto& [file, unfit] :
            {std::pair {u"y.db"_s, group}, std::pair {u"shared/y.db"_s, u"no such"_s}}) {
            QCOMPARE(run({u"create"_s, u"--file"_s, folder.filePath(file), u"--group"_s, unfit}), 2);
            QVERIFY(!QFile::exists(folder.filePath(file)));
        }
    }

    void refusesWrongLines_data()
    {
        QTest::addColumn<QStringList>("line");
        QTest::newRow("no command") << QStringList();
        QTest::newRow("unknown command") << QStringList {u"drop"_s};
        QTest::newRow("unknown option") << QStringList {u"check"_s, u"--repair"_s};
        QTest::newRow("two targets") << QStringList {
            u"check"_s, u"--file"_s, u"a"_s, u"--connection"_s, u"b"_s};
        QTest::newRow("no day") << QStringList {u"demo"_s, u"--today"_s, u"2003-02-30"_s};
        QTest::newRow("no number") << QStringList {u"scale"_s, u"--copies"_s, u"-5"_s};
        QTest::newRow("backup without a file") << QStringList {u"backup"_s};
        QTest::newRow("backup of a server")
            << QStringList {u"backup"_s, u"x"_s, u"--connection"_s, u"DSN=elsewhere;UID=me;PWD=secret"_s};
        QTest::newRow("unreachable server")
            << QStringList {u"check"_s, u"--connection"_s, u"DSN=elsewhere;UID=me;PWD=secret"_s};
        QTest::newRow("missing base") << QStringList {u"check"_s, u"--file"_s, u"/nowhere/at/all.db"_s};
    }

    void refusesWrongLines()
    {
        QFETCH(QStringList, line);
        QCOMPARE(run(line), 2);
        QVERIFY(!output.trimmed().isEmpty());
        QVERIFY2(!output.contains(u"secret"_s), qPrintable(output));
    }

    void findsDamage()
    {
        TestBase base([](Connection& filled) {
            filled.execute(u"insert into dzk(readercode,name,orderbook) values('R1','张三',1)");
        });
        QCOMPARE(run({u"check"_s, u"--file"_s, base.file}), 1);
        QVERIFY2(output.contains(u"读者证号=R1"_s), qPrintable(output));
    }

    void savesAndRestores()
    {
        TestBase base(
            [](Connection& filled) { filled.execute(u"insert into dzlx(readerclass) values('教师')"); });
        base.connection.execute(u"insert into dzlx(readerclass) values('学生')");
        const QString copy = folder.filePath(u"copy.db"_s);
        QCOMPARE(run({u"backup"_s, copy, u"--file"_s, base.file}), 0);
        QCOMPARE(run({u"backup"_s, copy, u"--file"_s, base.file}), 2);
        base.connection.execute(u"delete from dzlx");
        QCOMPARE(run({u"restore"_s, copy, u"--file"_s, base.file}), 2);

        const QString restored = folder.filePath(u"restored.db"_s);
        QCOMPARE(run({u"restore"_s, copy, u"--file"_s, restored}), 0);
        base.connection = base.factory.open(u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, restored));
        QCOMPARE(base.rows(u"select readerclass from dzlx order by dzlxid"), u"教师\n学生"_s);
    }

    void copiesOnlySoundLibraries()
    {
        TestBase base;
        base.connection.close();
        base.factory.drain();
        damageFile(base.file);
        const QString empty = folder.filePath(u"empty.db"_s);
        writeFile(empty, {});
        const QString oneTable = folder.filePath(u"table.db"_s);
        createEmbedded(oneTable, base.schema, base.clock,
            [](Connection& made) { made.execute(u"create table dzlx(readerclass varchar(20))"); });
        const QString target = folder.filePath(u"target.db"_s);
        for (const QString& unfit : {base.file, empty, oneTable}) {
            QCOMPARE(run({u"backup"_s, target, u"--file"_s, unfit}), 2);
            QVERIFY2(output.contains(unfit), qPrintable(output));
            QCOMPARE(run({u"restore"_s, unfit, u"--file"_s, target}), 2);
            QVERIFY(!QFile::exists(target));
        }
    }

    /// With the numbers that its rows have; one of a row that is gone is not given again.
    void copiesIntoAFile()
    {
        TestBase base;
        for (const QStringView type : {u"教师", u"学生", u"职工"})
            base.connection.execute(u"insert into dzlx(readerclass) values('%1')"_s.arg(type));
        base.connection.execute(
            u"insert into jhslsk(readercode,barcode,orderdate) values('R ','B','2003-01-01 23:59:59.120')");
        base.connection.execute(u"delete from dzlx where dzlxid<>2");
        const QString copy = folder.filePath(u"copied.db"_s);
        const QString text = u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, copy);
        QCOMPARE(run({u"copy"_s, u"--file"_s, base.file, u"--connection"_s, text}), 0);
        QCOMPARE(run({u"copy"_s, u"--file"_s, copy, u"--connection"_s, text}), 2); // onto itself
        base.connection = base.factory.open(text);
        base.connection.execute(u"insert into dzlx(readerclass) values('其他')");
        QCOMPARE(base.rows(u"select dzlxid,readerclass from dzlx order by dzlxid"), u"2|学生\n4|其他"_s);
        QCOMPARE(base.rows(u"select readercode+'.',convert(varchar,orderdate,120) from jhslsk"),
            u"R .|2003-01-01 23:59:59"_s);
    }

    void importsReaders()
    {
        TestBase base([](Connection& filled) {
            filled.execute(u"insert into dzlx(readerclass) values('教师')");
            filled.execute(u"insert into jycs(readerclass,bookcount,daycount) values('教师',5,30)");
        });
        const QString name = folder.filePath(u"readers.csv"_s);
        writeFile(name, "读者证号,姓名,读者类型,读者单位\nR1,甲,教师,新\nR2,乙,外来,\n");
        const QStringList line {u"import-readers"_s, name, u"--file"_s, base.file, u"--add-units"_s};
        QCOMPARE(run(line), 1);
        QVERIFY2(output.startsWith(u"第 3 行：没有这个读者类型：外来\n"), qPrintable(output));
        QCOMPARE(run(line + QStringList {u"--skip-refused"_s, u"--dry-run"_s}), 1);
        for (const QString& unfit : {name, folder.path(), folder.filePath(u"none/x.csv"_s)})
            QCOMPARE(run(line + QStringList {u"--skip-refused"_s, u"--refused"_s, unfit}), 2);
        QCOMPARE(base.rows(u"select readercode from dzk"), QString());
        const QStringList kept {u"--skip-refused"_s, u"--refused"_s, name + u".refused"_s};
        QCOMPARE(run(line + kept), 1);
        QCOMPARE(modeOf(kept.last()), 0600u);
        const qint64 size = QFileInfo(kept.last()).size();
        QCOMPARE(run(line + kept), 2); // does not overwrite
        QCOMPARE(QFileInfo(kept.last()).size(), size);
        QCOMPARE(base.rows(u"select readercode,readunit from dzk"), u"R1|新"_s);
    }

    /// What a server that we cannot try gets must not change unseen. After a change that is meant:
    ///   …/quilla-db create --engine sqlserver --script >tests/database/sqlserver_script.golden
    void printsTheScript()
    {
        QFile kept(QStringLiteral(QUILLA_SOURCE_DIR "/tests/database/sqlserver_script.golden"));
        QVERIFY(kept.open(QIODevice::ReadOnly));
        const QStringList expected = QString::fromUtf8(kept.readAll()).split(u'\n');
        QCOMPARE(run({u"create"_s, u"--engine"_s, u"sqlserver"_s, u"--script"_s}), 0);
        const QStringList printed = output.split(u'\n');
        for (qsizetype line = 0; line < std::min(expected.size(), printed.size()); ++line)
            QVERIFY2(printed[line] == expected[line],
                qPrintable(u"line %1: %2\nkept: %3"_s.arg(line + 1).arg(printed[line], expected[line])));
        QCOMPARE(printed.size(), expected.size());
    }

private:
    int run(const QStringList& arguments) { return run(QString::fromUtf8(QUILLA_DB_TOOL), arguments); }
    int run(const QString& program, const QStringList& arguments)
    {
        QProcess tool;
        tool.setProcessChannelMode(QProcess::MergedChannels);
        tool.start(program, arguments);
        if (!tool.waitForFinished(120000) || tool.exitStatus() != QProcess::NormalExit) return -1;
        output = QString::fromUtf8(tool.readAll());
        return tool.exitCode();
    }

    QTemporaryDir folder;
    QString output;
};

QTEST_GUILESS_MAIN(TestTool)
#include "test_tool.moc"
