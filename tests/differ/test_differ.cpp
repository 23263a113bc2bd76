// Sends the same statements to a library on SQLite and to one on PostgreSQL and compares what they do.
//   test_differ [SEED [COUNT [FINDINGS]]]
// makes COUNT statements from grammar.txt; SEED decides which, and which rows the libraries hold: new ones
// after every thousand statements. A statement that the engines answer differently is made as short as it
// stays different and shown with both answers; the run ends after so many FINDINGS. It needs the server of
// tests/postgres/start.sh.
#include "database/library_schema.h"
#include "differ/grammar.h"
#include "differ/side.h"
#include "platform/core/text.h"
#include "platform/db/embedded.h"
#include "source_dir.h"
#include "sql/case_file.h"
#include "support/fixed_clock.h"
#include "support/postgres_database.h"

#include <QCoreApplication>
#include <QDir>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>

using namespace quilla;
using namespace quilla::test;

namespace {

constexpr int StatementsALibrary = 1000;

const QString Numbers
    = u"create table numbers (whole int, small smallint, tiny tinyint, amount decimal(10,2), flag bit, t varchar(50), code varchar(20), d datetime)"_s;

sql::Schema differSchema()
{
    return sql::readSchema(Numbers, librarySchema());
}

/// The two libraries, filled with the same rows.
class Differ {
public:
    explicit Differ(quint64 seed)
        : m_grammar(QStringLiteral(QUILLA_SOURCE_DIR "/tests/differ/grammar.txt"))
        , m_chance(seed)
        , m_schema(differSchema())
    {
        const auto create = [](Connection& connection) {
            createLibrary(connection);
            connection.execute(Numbers);
            connection.execute(u"create unique index ix_readers on dzk (readercode)");
        };
        const QString file = m_folder.filePath(u"differ.db"_s);
        createEmbedded(file, m_schema, m_clock, create);
        m_sqlite
            = std::make_unique<Side>(m_schema, m_clock, u"DSN=%1;Database=%2"_s.arg(BuiltInDataSource, file));
        m_postgres = std::make_unique<Side>(m_schema, m_clock, m_database.connectionText());
        create(m_postgres->connection);
        m_database.run("CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE "
                       "RETURN timestamp '2004-03-09 08:05:03'");
        fill();
    }

    /// A statement that the engines answer differently, made short; empty when this one is answered alike.
    QString next()
    {
        constexpr int casesOfTen = 2;
        if (m_chance() % 10 < casesOfTen) {
            const QString statement = withOtherLiterals(m_cases[m_chance() % m_cases.size()]);
            return differs(statement) ? statement : QString();
        }
        auto growth = m_grammar.grow(u"statement"_s, m_chance);
        if (!differs(m_grammar.text(*growth))) return {};
        while (auto shorter = simplerDifferent(*growth))
            growth = std::move(shorter);
        return m_grammar.text(*growth);
    }

    void tell(const QString& statement, QTextStream& out)
    {
        const Outcome left = m_sqlite->send(statement);
        const Outcome right = m_postgres->send(statement);
        out << statement << "\n--- SQLite\n"
            << shownBeside(left, right) << "\n--- PostgreSQL\n"
            << shownBeside(right, left) << "\n\n"
            << Qt::flush;
    }

    int failures() const { return m_failures; }

private:
    void fill()
    {
        constexpr int rows = 12;
        for (const QStringView table :
            {u"dzk", u"zsk", u"sck", u"jhsk", u"jhslsk", u"yyk", u"fkk", u"BookOut", u"numbers"})
            for (int row = 0; row < rows; ++row) {
                const QString statement
                    = m_grammar.text(*m_grammar.grow(u"row."_s + table.toString(), m_chance));
                for (Side* side : {m_sqlite.get(), m_postgres.get()})
                    insert(*side, statement);
            }
    }

    /// A row that has no place in the table is left out on both sides.
    static void insert(Side& side, const QString& statement)
    {
        try {
            side.connection.execute(statement);
        } catch (const Error&) { // a null where none may be
        }
    }

    static QStringList caseStatements()
    {
        static const QRegularExpression sent(u"^\\s*(select|insert|update|delete)(?!.*right join)"_s,
            QRegularExpression::CaseInsensitiveOption);
        const QString folder = QStringLiteral(QUILLA_SOURCE_DIR "/tests/sql/cases/");
        QStringList statements;
        for (const QString& file : QDir(folder).entryList({u"*.txt"_s}))
            for (const Case& each : readCases(folder + file))
                if (sent.match(each.statement).hasMatch()) statements += each.statement;
        return statements;
    }

    static QString ruleLike(QStringView literal)
    {
        if (literal.startsWith(u'\'')) return u"literal"_s;
        return literal.contains(u'.') ? u"plainnumber"_s : u"wholenumber"_s;
    }

    /// Not in a select that groups by what it shows: both must stay alike.
    QString withOtherLiterals(const QString& statement)
    {
        static const QRegularExpression literal(u"'(?:[^']|'')*'|\\b\\d+(?:\\.\\d+)?\\b"_s);
        if (statement.contains(u"group by"_s, Qt::CaseInsensitive)) return statement;
        QString result;
        qsizetype end = 0;
        for (const QRegularExpressionMatch& match : literal.globalMatch(statement)) {
            const bool other = m_chance() % 2;
            result += statement.sliced(end, match.capturedStart() - end)
                + (other ? m_grammar.text(*m_grammar.grow(ruleLike(match.captured()), m_chance))
                         : match.captured());
            end = match.capturedEnd();
        }
        return result + statement.sliced(end);
    }

    bool differs(const QString& statement)
    {
        const Outcome left = m_sqlite->send(statement);
        const Outcome right = m_postgres->send(statement);
        if (!left.failure.isEmpty()) ++m_failures;
        return !isSame(statement, left, right);
    }

    std::unique_ptr<Growth> simplerDifferent(const Growth& growth)
    {
        for (auto& each : m_grammar.simpler(growth))
            if (m_grammar.text(*each).size() < m_grammar.text(growth).size()
                && differs(m_grammar.text(*each)))
                return std::move(each);
        return {};
    }

    Grammar m_grammar;
    QStringList m_cases = caseStatements();
    std::mt19937_64 m_chance;
    sql::Schema m_schema;
    FixedClock m_clock {{QDate(2004, 3, 9), QTime(8, 5, 3)}};
    QTemporaryDir m_folder;
    PostgresDatabase m_database;
    std::unique_ptr<Side> m_sqlite;
    std::unique_ptr<Side> m_postgres;
    int m_failures = 0;
};

} // namespace

int main(int count, char** arguments)
{
    QCoreApplication application(count, arguments);
    const QStringList given = application.arguments();
    const auto number = [&](int at, int usual) { return at < given.size() ? given[at].toInt() : usual; };
    const int seed = number(1, 1);
    const int statements = number(2, 3000);
    const int most = number(3, 1);
    QTextStream out(stdout);
    std::optional<Differ> differ;
    int failures = 0;
    int findings = 0;
    int sent = 0;
    for (; sent < statements && findings < most; ++sent) {
        if (sent % StatementsALibrary == 0) differ.emplace(quint64(seed) << 32 | quint64(sent));
        const int before = differ->failures();
        const QString finding = differ->next();
        failures += differ->failures() - before;
        if (finding.isEmpty()) continue;
        out << "Seed " << seed << ", statement " << sent + 1 << ":\n";
        differ->tell(finding, out);
        ++findings;
    }
    out << sent << " statements, " << failures << " of them refused or failing, " << findings
        << " findings\n";
    return findings ? 1 : 0;
}
