#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "platform/sql/parser.h"
#include "platform/sql/printer.h"
#include "source_dir.h"
#include "sql/case_file.h"
#include "support/fixed_clock.h"
#include "support/postgres_database.h"

#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
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

/// Numbers without the zeros at the end of their fraction, dates in their canonical form.
QString shown(const Value& value)
{
    if (value.isNull()) return u"NULL"_s;
    if (value.kind() == Kind::Bit) return value.isTrue() ? u"1"_s : u"0"_s;
    QString text = value.text();
    if (value.kind() == Kind::Date) {
        const CanonicalMoment moment(*value.moment());
        text = QString::fromUtf8(moment.view().data(), qsizetype(moment.view().size()));
    } else if (value.kind() == Kind::Decimal && text.contains(u'.')) {
        while (text.endsWith(u'0'))
            text.chop(1);
        if (text.endsWith(u'.')) text.chop(1);
    }
    return text;
}

/// The tables of the cases on one engine, in which one case leaves no trace for the next.
class Bench {
public:
    Bench(Engine engine, const Schema& schema, const Clock& clock, const QString& connectionText)
        : m_factory(schema, clock)
        , translator(engine, schema)
        , connection(m_factory.open(connectionText))
    {
    }

    /// The rows (of `then`, if given) as "a|b;c|d", or the number of rows that changed, or "fails: " and the
    /// engine's words.
    QString outcome(const QString& statement, const Translation& translation, const QString& then)
    {
        if (translation.text.isEmpty()) return {};
        QString outcome;
        connection.begin();
        try {
            outcome = translation.returnsRows ? rowsOf(connection.open(statement))
                                              : QString::number(connection.execute(statement));
            if (!then.isEmpty()) outcome = rowsOf(connection.open(then));
        } catch (const Error& error) {
            outcome = u"fails: "_s + error.text;
        }
        connection.rollback();
        return outcome.trimmed();
    }

private:
    static QString rowsOf(Recordset row)
    {
        QStringList rows;
        for (; !row.eof(); row.next()) {
            QStringList fields;
            for (int field = 0; field < row.fieldCount(); ++field)
                fields += shown(row.field(field));
            rows += fields.join(u'|');
        }
        return rows.join(u';');
    }

    PooledFactory m_factory;

public:
    Translator translator;
    Connection connection;
};

void fillBase(Connection& connection)
{
    for (const QString& script : {u"library.sql"_s, u"rows.sql"_s})
        for (const ScriptPart& part : splitScript(readText(CaseFolder + script)))
            connection.execute(part.text);
}

/// Rows that are no table's have an order of the engine's own where the statement names none.
QString comparable(const QString& rows, const QString& statement)
{
    static const QRegularExpression combined(
        u"\\b(group by|distinct|union|top)\\b"_s, QRegularExpression::CaseInsensitiveOption);
    if (rows.startsWith(u"fails:"_s)) return u"fails"_s;
    if (statement.contains(u"order by"_s, Qt::CaseInsensitive) || !statement.contains(combined)) return rows;
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
    FixedClock m_clock {{QDate(2004, 3, 9), QTime(8, 5, 3)}};
    QTemporaryDir m_folder;
    std::unique_ptr<PostgresDatabase> m_database;
    std::unique_ptr<Bench> m_sqlite;
    std::unique_ptr<Bench> m_postgres;

    /// What the engine made of the case; nothing when it was refused.
    std::optional<QString> run(Bench& bench, const QString& engine, const Case& tested)
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
            return bench.outcome(tested.statement, translation, tested.expected.value(u"then"_s));
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
        const QString file = m_folder.filePath(u"cases.db"_s);
        createEmbedded(file, m_schema, m_clock, fillBase);
        m_sqlite = std::make_unique<Bench>(
            Engine::Sqlite, m_schema, m_clock, u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file));
        m_database = std::make_unique<PostgresDatabase>();
        m_postgres
            = std::make_unique<Bench>(Engine::Postgres, m_schema, m_clock, m_database->connectionText());
        m_postgres->connection.prepareEmptyBase();
        m_database->run("CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE "
                        "RETURN timestamp '2004-03-09 08:05:03'");
        fillBase(m_postgres->connection);
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
#include "test_cases.moc"
