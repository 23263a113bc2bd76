#include "platform/core/error.h"
#include "platform/core/text.h"
#include "platform/sql/parser.h"
#include "platform/sql/printer.h"
#include "sql/case_file.h"
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

} // namespace

/// Runs the files below cases/ on the dialects, and what is meant for SQLite on a real base.
class TestCases : public QObject {
    Q_OBJECT

private:
    Schema m_schema;
    SqliteBase m_base;

    void runScript(Translator& translator, const QString& file)
    {
        std::vector<Literal> literals;
        for (const ScriptPart& part : splitScript(readText(CaseFolder + file)))
            m_base.run(translator.translate(part.text, literals), literals);
    }

    QString outcome(const Translation& translation, const std::vector<Literal>& literals)
    {
        m_base.run("SAVEPOINT one_case");
        QString rows;
        try {
            rows = m_base.run(translation, literals);
        } catch (const Error& error) {
            rows = u"fails: "_s + error.text;
        }
        m_base.run("ROLLBACK TO one_case");
        m_base.run("RELEASE one_case");
        return rows;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_schema = readSchema(readText(CaseFolder + u"library.sql"_s));
        Translator translator(Engine::Sqlite, m_schema);
        runScript(translator, u"library.sql"_s);
        runScript(translator, u"rows.sql"_s);
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
        Translator sqlite(Engine::Sqlite, m_schema);
        for (const Case& each : readCases(CaseFolder + file)) {
            const QByteArray place = each.place().toUtf8();
            const auto same = [&](const QString& key, const QString& actual) {
                if (!each.expected.contains(key)) return true;
                return QTest::qCompare(
                    actual, QString(each.expected[key]), key.toUtf8(), place.constData(), __FILE__, __LINE__);
            };
            std::vector<Literal> literals;
            try {
                const Translation& translation = sqlite.translate(each.statement, literals);
                QVERIFY2(!each.expected.contains(u"refused"_s), place);
                same(u"sqlite"_s, QString::fromUtf8(translation.text));
                same(u"params"_s, lettersOf(translation, u"params"_s));
                same(u"columns"_s, lettersOf(translation, u"columns"_s));
                const QString rows = translation.text.isEmpty() ? QString() : outcome(translation, literals);
                same(u"rows"_s, rows.trimmed());
                const QString failure = each.expected.value(u"fails"_s);
                const bool fails = rows.startsWith(u"fails: "_s);
                QVERIFY2(fails == each.expected.contains(u"fails"_s) && rows.contains(failure),
                    place + ' ' + rows.toUtf8());
            } catch (const Error& error) {
                const QString told = each.expected.value(u"refused"_s);
                QVERIFY2(!told.isEmpty() && error.text.contains(told), place + ' ' + error.text.toUtf8());
                QCOMPARE(error.number, ErrorNumber::NotUnderstood);
            }
        }
    }

    /// What is printed as T-SQL means the same: parsed and printed again it reads the same, and it leads
    /// to the same SQLite text.
    void roundTrip_data() { cases_data(); }
    void roundTrip()
    {
        QFETCH(QString, file);
        Translator sqlite(Engine::Sqlite, m_schema);
        for (const Case& each : readCases(CaseFolder + file)) {
            if (each.expected.contains(u"refused"_s)) continue;
            const QString printed = Printer().print(parse(each.statement).statement);
            QCOMPARE(Printer().print(parse(printed).statement), printed);
            std::vector<Literal> literals;
            const QByteArray direct = sqlite.translate(each.statement, literals).text;
            QCOMPARE(sqlite.translate(printed, literals).text, direct);
        }
    }
};

QTEST_GUILESS_MAIN(TestCases)
#include "tst_cases.moc"
