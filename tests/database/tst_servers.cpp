#include "database/check.h"
#include "database/copy_library.h"
#include "database/demo_library.h"
#include "database/procedures.h"
#include "database/resource_text.h"
#include "database/test_base.h"
#include "platform/sql/translator.h"
#include "support/postgres_database.h"

using namespace quilla;

/// Libraries on servers: copied from the embedded file, or made by a script.
class TestServers : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void copyBringsEverything()
    {
        TestBase base([](Connection& created) {
            DemoOptions options;
            options.today = QDate(2003, 10, 1);
            options.titles = 60;
            options.copies = 120;
            options.readers = 20;
            fillDemoLibrary(created, options);
            created.execute(u"insert into dzk(readercode,name,fine,term,memo) values('O''hara  ','𠮷 "
                            u"''\"\\?',-0.125,'2003-05-06 "
                            "07:08:09.120','a\r\n b')");
            created.execute(u"delete from jhslsk where jhslsk<10");
        });
        const PostgresDatabase database;
        Connection target = base.factory.open(database.connectionText());
        QStringList told;
        target.begin(OnFailure::EndTransaction);
        copyLibrary(base.connection, target, [&](const QString& table, qint64) { told += table; });
        target.commit();
        for (const sql::Table& table : base.schema.tables()) {
            if (table.view) continue;
            QVERIFY(told.contains(table.name));
            QCOMPARE(sortedRows(target, table), sortedRows(base.connection, table));
        }
        QVERIFY(checkLibrary(target).empty());
        // The next number comes after all that were brought.
        target.execute(u"insert into jhslsk(readercode,barcode) values('R','B')");
        QCOMPARE(target
                     .open(u"select count(*) from jhslsk where jhslsk=(select max(jhslsk) from jhslsk) and "
                           u"barcode='B'")
                     .field(0)
                     .integer(),
            1);
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
        QString words;
        try {
            copyLibrary(base.connection, target, [](const QString&, qint64) {});
        } catch (const Error& error) {
            words = error.text;
        }
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
                definitions += statement + u"go\n"_s;
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
            QVERIFY(rest.removeOne(procedure.trimmed() + u'\n'));
            QCOMPARE(translator.translate(procedure, literals).text, procedure.toUtf8());
        }
        for (const QString& statement : rest) {
            QVERIFY2(statement.contains(u"insert into"_s), qPrintable(statement));
            QVERIFY(!translator.translate(statement, literals).returnsRows);
        }
        QVERIFY(rest.last().contains(u"'O''Hara'"_s));
    }

private:
    /// Each row as one text, nulls told from empty texts.
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
#include "tst_servers.moc"
