#include "database/library_schema.h"
#include "database/resource_text.h"
#include "platform/core/text.h"
#include "sql/postgres_base.h"

#include <QTest>

using namespace quilla;
using namespace quilla::sql;

/// The library's own tables and views on a real PostgreSQL, without a driver.
class TestPostgresSchema : public QObject {
    Q_OBJECT

private:
    Schema m_schema = librarySchema();
    Translator m_translator {Engine::Postgres, m_schema};
    std::unique_ptr<test::PostgresBase> m_base;
    std::vector<Literal> m_literals;

    QString send(const QString& tsql)
    {
        try {
            const Translation& statement = m_translator.translate(tsql, m_literals);
            return m_base->run(statement, m_literals);
        } catch (const Error& error) {
            return u"fails: "_s + error.text;
        }
    }

    /// How the server finds the rows when it may not read whole tables.
    QString plan(const QString& tsql)
    {
        Translation statement = m_translator.translate(tsql, m_literals);
        statement.text.prepend("EXPLAIN (COSTS OFF) ");
        statement.returnsRows = true;
        return m_base->run(statement, m_literals);
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_base = std::make_unique<test::PostgresBase>();
        for (const Translation& statement : m_translator.preparation())
            m_base->run(statement);
        for (const QString& script : {u"schema.sql"_s, u"views.sql"_s, u"initial.sql"_s})
            for (const QString& statement : splitStatements(resourceText(script)))
                QVERIFY2(!send(statement).startsWith(u"fails: "_s), qPrintable(statement));
    }

    void columnsKeepOutWhatIsNotTheirs()
    {
        const QString full(10, u'男');
        const std::pair<QString, bool> rows[] {{u"'R','%1',null"_s.arg(full), true},
            {u"'R','%1   ',null"_s.arg(full), true}, // blanks beyond the width
            {u"'R','%1女',null"_s.arg(full), false}, {u"null,'',null"_s, false}, {u"'R','',''"_s, false},
            {u"'R','','2003-02-29'"_s, false}};
        for (const auto& [values, taken] : rows) {
            const QString told = send(u"insert into dzk(readercode,sex,term) values("_s + values + u")"_s);
            QVERIFY2(told.startsWith(u"fails: "_s) != taken, qPrintable(values + told));
        }
    }

    void clockMovesInsideATransaction()
    {
        m_base->run("BEGIN");
        const QString before = send(u"select getdate()"_s);
        m_base->run("SELECT pg_sleep(0.002)");
        QVERIFY(send(u"select getdate()"_s) > before);
        m_base->run("ROLLBACK");
    }

    /// Codes are found by their indexes whatever their case and the blanks behind them.
    void codesAreFoundByIndexes()
    {
        m_base->run("SET enable_seqscan = off");
        for (const QString& statement :
            {u"select readstatus from DZK  where ReaderCode='R1'"_s,
                u"select borrowstatus from SCK  where bookstatus<>'丢失' and barcode='B1'"_s,
                u"select oldtime from yyk  join dzk on yyk.readercode=dzk.readercode where yyk.barcode='B1'"_s,
                u"select count(jhskid) from jhsk where readercode='R1' And yhdate<'2004-1-1'"_s,
                u"select name,price from JhskV where barcode='B1'"_s,
                u"delete from jhslsk where barcode='B1'"_s}) {
            const QString told = plan(statement);
            QVERIFY2(told.contains(u"Index Cond"_s) && !told.contains(u"Seq Scan"_s), qPrintable(told));
        }
        m_base->run("SET enable_seqscan = on");
    }
};

QTEST_GUILESS_MAIN(TestPostgresSchema)
#include "tst_postgres_schema.moc"
