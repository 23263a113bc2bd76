#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/sql/parser.h"
#include "platform/sql/printer.h"
#include "sql/case_file.h"
#include "sql/postgres_base.h"
#include "sql/sqlite_base.h"

#include <QDir>
#include <QTest>

using namespace quilla;
using namespace quilla::sql;
using namespace quilla::test;

namespace {

const QString CaseFolder = QStringLiteral(QUILLA_SOURCE_DIR "/tests/sql/cases/");

QString letter(Kind kind)
{
    switch (kind) {
    case Kind::Text:
        return u"t"_s;
    case Kind::Integer:
        return u"i"_s;
    case Kind::Decimal:
        return u"m"_s;
    case Kind::Bit:
        return u"b"_s;
    case Kind::Date:
        return u"d"_s;
    case Kind::Unknown:
        break;
    }
    return u"?"_s;
}

QString lettersOf(const Translation& translation, const QString& key)
{
    QString letters;
    if (key == u"columns") {
        for (const Kind kind : translation.columns)
            letters += letter(kind);
        return letters;
    }
    for (const Parameter& parameter : translation.parameters) {
        letters += letter(parameter.kind);
        if (parameter.scale >= 0) letters += QString::number(parameter.scale);
    }
    return letters;
}

/// A translator with a base of its engine, in which one case leaves no trace for the next.
template <typename Base> class Bench {
public:
    Bench(Engine engine, const Schema& schema)
        : translator(engine, schema)
    {
    }

    void runScript(const QString& file)
    {
        std::vector<Literal> literals;
        for (const ScriptPart& part : splitScript(readText(CaseFolder + file)))
            base.run(translator.translate(part.text, literals), literals);
    }

    /// The rows, or "fails: " and the engine's words.
    QString outcome(const Translation& translation, const std::vector<Literal>& literals)
    {
        if (translation.text.isEmpty()) return {};
        base.run("SAVEPOINT one_case");
        QString rows;
        try {
            rows = base.run(translation, literals);
        } catch (const Error& error) {
            rows = u"fails: "_s + error.text;
        }
        base.run("ROLLBACK TO one_case");
        base.run("RELEASE one_case");
        return rows.trimmed();
    }

    Translator translator;
    Base base;
};

/// Where a statement names no order, each engine has its own.
QString comparable(const QString& rows, const QString& statement)
{
    if (rows.startsWith(u"fails:"_s)) return u"fails"_s;
    if (statement.contains(u"order by"_s, Qt::CaseInsensitive)) return rows;
    QStringList sorted = rows.split(u';');
    sorted.sort();
    return sorted.join(u';');
}

} // namespace

/// Runs the files below cases/ on real bases of the engines: the texts are as they stand there, and the same
/// statement does the same on each engine.
class TestCases : public QObject {
    Q_OBJECT

private:
    Schema m_schema;
    std::unique_ptr<Bench<SqliteBase>> m_sqlite;
    std::unique_ptr<Bench<PostgresBase>> m_postgres;

    /// What the engine made of the case; nothing when it was refused.
    template <typename Base>
    std::optional<QString> run(Bench<Base>& bench, const QString& engine, const Case& tested)
    {
        const QByteArray place = tested.place().toUtf8();
        const auto same = [&](const QString& key, const QString& actual) {
            if (!tested.expected.contains(key)) return;
            QTest::qCompare(
                actual, QString(tested.expected[key]), key.toUtf8(), place.constData(), __FILE__, __LINE__);
        };
        std::vector<Literal> literals;
        try {
            const Translation& translation = bench.translator.translate(tested.statement, literals);
            same(engine, QString::fromUtf8(translation.text));
            same(u"params"_s, lettersOf(translation, u"params"_s));
            same(u"columns"_s, lettersOf(translation, u"columns"_s));
            return bench.outcome(translation, literals);
        } catch (const Error& error) {
            if (error.number != ErrorNumber::NotUnderstood) throw;
            same(u"refused"_s,
                error.text.contains(tested.expected.value(u"refused"_s)) ? tested.expected.value(u"refused"_s)
                                                                         : error.text);
            return {};
        }
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_schema = readSchema(readText(CaseFolder + u"library.sql"_s));
        m_sqlite = std::make_unique<Bench<SqliteBase>>(Engine::Sqlite, m_schema);
        m_postgres = std::make_unique<Bench<PostgresBase>>(Engine::Postgres, m_schema);
        for (const Translation& statement : m_postgres->translator.preparation())
            m_postgres->base.run(statement);
        m_postgres->base.run("CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE "
                             "RETURN timestamp '2004-03-09 08:05:03'; BEGIN");
        for (const QString& script : {u"library.sql"_s, u"rows.sql"_s}) {
            m_sqlite->runScript(script);
            m_postgres->runScript(script);
        }
    }

    void cases_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString& file : QDir(CaseFolder).entryList({u"*.txt"_s}))
            QTest::newRow(qPrintable(file)) << file;
    }

    void cases()
    {
        QFETCH(QString, file);
        for (const Case& each : readCases(CaseFolder + file)) {
            const QByteArray place = each.place().toUtf8();
            const auto sqlite = run(*m_sqlite, u"sqlite"_s, each);
            const auto postgres = run(*m_postgres, u"postgres"_s, each);
            const bool refused = each.expected.contains(u"refused"_s);
            QVERIFY2(sqlite.has_value() != refused && postgres.has_value() != refused, place);
            if (refused) continue;
            const bool fails = each.expected.contains(u"fails"_s);
            QVERIFY2(sqlite->startsWith(u"fails:"_s) == fails, place + ' ' + sqlite->toUtf8());
            QVERIFY2(sqlite->contains(each.expected.value(u"fails"_s)), place + ' ' + sqlite->toUtf8());
            if (each.expected.contains(u"rows"_s))
                QTest::qCompare(
                    *sqlite, QString(each.expected[u"rows"_s]), "rows", place, __FILE__, __LINE__);
            const QByteArray told = place + ": " + postgres->toUtf8();
            QTest::qCompare(comparable(*postgres, each.statement), comparable(*sqlite, each.statement), told,
                "sqlite", __FILE__, __LINE__);
        }
    }

    /// What is printed as T-SQL means the same: parsed and printed again it reads the same, and it leads
    /// to the same texts.
    void roundTrip_data() { cases_data(); }
    void roundTrip()
    {
        QFETCH(QString, file);
        for (const Case& each : readCases(CaseFolder + file)) {
            if (each.expected.contains(u"refused"_s)) continue;
            const QString printed = Printer().print(parse(each.statement).statement);
            QCOMPARE(Printer().print(parse(printed).statement), printed);
            std::vector<Literal> literals;
            for (Translator* translator : {&m_sqlite->translator, &m_postgres->translator}) {
                const QByteArray direct = translator->translate(each.statement, literals).text;
                QCOMPARE(translator->translate(printed, literals).text, direct);
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestCases)
#include "tst_cases.moc"
