#include "database/check.h"
#include "database/copy_library.h"
#include "database/demo_library.h"
#include "database/procedures.h"
#include "database/resource_text.h"
#include "database/test_base.h"
#include "db/error_of.h"
#include "platform/db/server_backup.h"
#include "platform/db/server_schema.h"
#include "platform/sql/translator.h"
#include "support/field_texts.h"
#include "support/file_mode.h"
#include "support/postgres_database.h"

using namespace quilla;

namespace {

/// An empty library on the server.
struct ServerLibrary {
    ServerLibrary() { createLibrary(connection); }

    /// How the server finds the rows.
    QString plan(const QString& tsql)
    {
        sql::Translator translator(sql::Engine::Postgres, schema);
        std::vector<sql::Literal> literals;
        QByteArray text = translator.translate(tsql, literals).text;
        for (const sql::Literal& literal : literals)
            text.replace(text.indexOf('?'), 1, '\'' + literal.text.toUtf8() + '\'');
        const QByteArray explain = "EXPLAIN (COSTS OFF) " + text;
        const auto lines = checkedResult(PQexec(database.handle(), explain.constData()));
        QString plan;
        for (int line = 0; line < PQntuples(lines.get()); ++line)
            plan += QString::fromUtf8(PQgetvalue(lines.get(), line, 0)) + u'\n';
        return plan;
    }

    PostgresDatabase database;
    SystemClock clock;
    sql::Schema schema = librarySchema();
    PooledFactory factory {schema, clock};
    Connection connection = factory.open(database.connectionText());
};

void fillSmallLibrary(Connection& connection)
{
    DemoOptions options;
    options.today = QDate(2003, 10, 1);
    options.titles = 60;
    options.copies = 120;
    options.readers = 20;
    fillDemoLibrary(connection, options);
}

} // namespace

/// Libraries on servers: copied from the embedded file, or made by a script.
class TestServers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// As an earlier program made it: by another collation under the same name.
    void bringsAnEarlierLibraryIntoOrder()
    {
        ServerLibrary server;
        const ConnectionItems items(server.database.connectionText());
        QVERIFY(!upgradeServer(items, server.schema));
        server.connection.execute(u"insert into dzk(readercode,name) values('1','张三')");
        server.connection.execute(u"insert into dzk(readercode,name) values('2','阿明')");
        server.connection.execute(u"insert into dzk(readercode,name) values('３','Zoe')");
        const auto names = [&] {
            Recordset rows = server.connection.open(u"select name from dzk order by name");
            return fieldTexts(rows, u"name").join(u',');
        };
        const QString sorted = u"阿明,张三,Zoe"_s;
        QCOMPARE(names(), sorted);
        server.database.run(
            "UPDATE pg_collation SET colliculocale='und-u-ks-level2' WHERE collname='quilla'");
        server.database.run("COMMENT ON COLLATION quilla IS NULL");
        server.database.run("ALTER TABLE dzk DROP COLUMN qj_entry");
        server.database.run("CREATE OR REPLACE FUNCTION qj_like(pattern text, given bpchar) RETURNS boolean "
                            "LANGUAGE sql IMMUTABLE RETURN given ~ pattern");
        server.connection = {};
        server.factory.drain();
        const auto refusal
            = [&] { return errorText([&] { server.factory.open(server.database.connectionText()); }); };
        QVERIFY(refusal().contains(u"quilla-db upgrade"_s));
        QVERIFY(upgradeServer(items, server.schema));
        QVERIFY(!upgradeServer(items, server.schema));
        server.connection = server.factory.open(server.database.connectionText());
        QCOMPARE(names(), sorted);
        QCOMPARE(server.connection.open(u"select name from dzk where name like '_三' or name like 'ｚ%'")
                     .recordCount(),
            2);
        QVERIFY(checkLibrary(server.connection).empty());
        server.database.run("UPDATE pg_collation SET collversion='1' WHERE collname='quilla'");
        QVERIFY(upgradeServer(items, server.schema));
        QVERIFY(!upgradeServer(items, server.schema));
        QVERIFY(!server.connection.open(u"select * from dzk where readercode='3'").eof());
        server.database.run("COMMENT ON COLLATION quilla IS '4'");
        server.connection = {};
        server.factory.drain();
        QVERIFY(refusal().contains(u"更新版本"_s));
        QVERIFY_THROWS_EXCEPTION(Error, upgradeServer(items, server.schema));
    }

    void restoresWhatWasBackedUp()
    {
        ServerLibrary server;
        server.connection.begin();
        fillSmallLibrary(server.connection);
        server.connection.commit();
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"saved"_s);
        backupServer(ConnectionItems(server.database.connectionText()), file);
        QCOMPARE(modeOf(file), 0600u);
        const PostgresDatabase database;
        const ConnectionItems items(database.connectionText());
        restoreServer(items, file);
        Connection restored = server.factory.open(database.connectionText());
        for (const sql::Table& table : server.schema.tables())
            if (!table.view) QCOMPARE(sortedRows(restored, table), sortedRows(server.connection, table));
        QVERIFY(checkLibrary(restored).empty());
        QVERIFY(errorOf([&] { restoreServer(items, file); }) != 0);
        QVERIFY(errorOf([&] { backupServer(items, file); }) != 0);
        QCOMPARE(restored.open(u"select * from dzk").recordCount(), 20);
    }

    void copyBringsEverything()
    {
        TestBase base([](Connection& created) {
            fillSmallLibrary(created);
            created.execute(u"insert into dzk(readercode,name,fine,term,memo) values('O''hara  ','𠮷 "
                            u"''\"\\?',-0.125,'2003-05-06 "
                            "07:08:09.120','a\r\n b')");
            created.execute(u"delete from jhslsk where jhslsk<10");
            created.execute(u"insert into jhslsk(readercode,barcode) values('R','gone')");
        });
        const auto newest = [](Connection& connection) {
            return connection.open(u"select max(jhslsk) from jhslsk").field(0).integer().value_or(0);
        };
        const qint64 gone = newest(base.connection);
        base.connection.execute(u"delete from jhslsk where barcode='gone'");
        const PostgresDatabase database;
        Connection target = base.factory.open(database.connectionText());
        QStringList told;
        target.begin(OnFailure::EndTransaction);
        copyLibrary(base.connection, target, [&](const QString& table, qint64) { told += table; });
        target.commit();
        const QString file = base.folder.filePath(u"back.db"_s);
        createEmbedded(file, base.schema, base.clock,
            [&](Connection& back) { copyLibrary(target, back, [](const QString&, qint64) {}); });
        Connection back = base.factory.open(u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file));
        for (const sql::Table& table : base.schema.tables()) {
            if (table.view) continue;
            QVERIFY(told.contains(table.name));
            QCOMPARE(sortedRows(target, table), sortedRows(base.connection, table));
            QCOMPARE(sortedRows(back, table), sortedRows(base.connection, table));
        }
        QVERIFY(checkLibrary(target).empty());
        // A number is never given again, not even that of a row that was gone before.
        target.execute(u"insert into jhslsk(readercode,barcode) values('R','B')");
        QCOMPARE(newest(target), gone + 1);
        target.execute(u"delete from jhslsk where barcode='B'");
        QCOMPARE(target.lastNumber(*base.schema.table(u"jhslsk"_s)), gone + 1);
        QVERIFY(target.open(u"select min(jhslsk) from jhslsk").field(0).integer() >= 10);
    }

    void copyIntoALibraryLeavesIt()
    {
        TestBase base;
        const PostgresDatabase database;
        Connection target = base.factory.open(database.connectionText());
        createLibrary(target);
        target.execute(u"insert into dzlx(readerclass) values('教师')");
        target.begin(OnFailure::EndTransaction);
        const QString words
            = errorText([&] { copyLibrary(base.connection, target, [](const QString&, qint64) {}); });
        QVERIFY2(words.contains(u"目标数据库必须是空的"_s), qPrintable(words));
        QVERIFY_THROWS_EXCEPTION(Error, target.commit());
        QCOMPARE(target.open(u"select readerclass from dzlx").field(0).text(), u"教师"_s);
    }

    /// Read back, it holds the same tables and views; no statement is changed on its way to a server of that
    /// dialect.
    void scriptIsWhatCreationSends()
    {
        const QStringList statements = splitStatements(libraryScript(u"O'Hara"_s));
        QString definitions;
        QStringList rest;
        for (const QString& statement : statements) {
            const bool defines = statement.contains(u"create table"_s) || statement.contains(u"create view"_s)
                || statement.contains(u"create index"_s);
            if (defines)
                definitions += statement + u"\ngo\n"_s;
            else
                rest += statement;
        }
        const sql::Schema read = sql::readSchema(definitions);
        const sql::Schema schema = librarySchema();
        QCOMPARE(read.tables().size(), schema.tables().size());
        for (const sql::Table& table : schema.tables()) {
            QVERIFY2(read.table(table.name), qPrintable(table.name));
            QCOMPARE(read.table(table.name)->columns.size(), table.columns.size());
        }
        sql::Translator translator(sql::Engine::SqlServer, schema);
        std::vector<sql::Literal> literals;
        for (const QString& procedure : procedureDefinitions()) {
            QVERIFY(rest.removeOne(procedure.trimmed()));
            QCOMPARE(translator.translate(procedure, literals).text, procedure.toUtf8());
        }
        for (const QString& statement : rest) {
            QVERIFY2(statement.contains(u"insert into"_s), qPrintable(statement));
            QVERIFY(!translator.translate(statement, literals).returnsRows);
        }
        QVERIFY(rest.last().contains(u"'O''Hara'"_s));
    }

    void columnsKeepOutWhatIsNotTheirs()
    {
        const QString full(10, u'男');
        const std::pair<QString, bool> rows[] {{u"'R','%1',null"_s.arg(full), true},
            {u"'R','%1   ',null"_s.arg(full), true}, // blanks beyond the width
            {u"'R','%1女',null"_s.arg(full), false}, {u"null,'',null"_s, false}, {u"'R','',''"_s, false},
            {u"'R','','2003-02-29'"_s, false}};
        ServerLibrary library;
        for (const auto& [values, taken] : rows) {
            const QString insert = u"insert into dzk(readercode,sex,term) values("_s + values + u')';
            const bool failed = errorOf([&] { library.connection.execute(insert); });
            QVERIFY2(failed != taken, qPrintable(values));
        }
    }

    void clockMovesInsideATransaction()
    {
        ServerLibrary library;
        const auto now
            = [&] { return library.connection.open(u"select getdate()").field(0).moment().value(); };
        library.connection.begin();
        const Moment before = now();
        QTRY_VERIFY(before < now());
    }

    /// Codes are found by their indexes whatever their case and the blanks behind them.
    void codesAreFoundByIndexes()
    {
        ServerLibrary library;
        library.database.run("SET enable_seqscan = off");
        for (const QString& statement :
            {u"select readstatus from DZK  where ReaderCode='R1'"_s,
                u"select borrowstatus from SCK  where bookstatus<>'丢失' and barcode='B1'"_s,
                u"select oldtime from yyk  join dzk on yyk.readercode=dzk.readercode where yyk.barcode='B1'"_s,
                u"select count(jhskid) from jhsk where readercode='R1' And yhdate<'2004-1-1'"_s,
                u"select name,price from JhskV where barcode='B1'"_s,
                u"delete from jhslsk where barcode='B1'"_s}) {
            const QString told = library.plan(statement);
            QVERIFY2(told.contains(u"Index Cond"_s) && !told.contains(u"Seq Scan"_s), qPrintable(told));
        }
    }

private:
    /// Each row as one text, in which a null differs from an empty text.
    QStringList sortedRows(Connection& connection, const sql::Table& table)
    {
        QStringList lines;
        for (Recordset row = connection.open(u"select * from "_s + table.name); !row.eof(); row.next()) {
            QString line;
            for (int field = 0; field < row.fieldCount(); ++field)
                line += row.field(field).isNull() ? u"-|"_s : u"="_s + row.field(field).text() + u'|';
            lines += line;
        }
        lines.sort();
        return lines;
    }
};

QTEST_GUILESS_MAIN(TestServers)
#include "test_servers.moc"
