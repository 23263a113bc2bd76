// What one statement costs through the connection, beside the same statement prepared on bare SQLite.
// Median nanoseconds; both modes take turns, so that a noisy machine hits them alike.
//
//   bench_db_statements [--quick] [folder]      (a memory file system shows the processor's share alone)

#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "platform/db/sqlite/sqlite_driver.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using namespace quilla;

namespace {

struct Sizes {
    int readers = 10'000;
    int rounds = 4'000;
};

const QString Script
    = u"create table reader (readerid int identity(1,1) not null, code varchar(50) not null,"
      u" name varchar(50), status varchar(20), term datetime, quota int, onloan int, canre bit)\n"
      u"go\n"
      u"create index ix_reader_code on reader (code)\n"_s;

void fill(Connection& connection, int readers)
{
    for (const auto& part : sql::splitScript(Script))
        connection.execute(part.text);
    for (int i = 0; i < readers; ++i)
        connection.execute(
            u"insert into reader(code,name,status,term,quota,onloan,canre) values('R%1','读者%1','有效','2030-12-31',5,2,0)"_s
                .arg(i));
}

QString codeOf(int round, const Sizes& sizes)
{
    return u"R%1"_s.arg(round * 7919 % sizes.readers);
}

/// A statement on bare SQLite, its one text bound; all columns are read.
class Bare {
public:
    Bare(sqlite3* database, const char* text)
    {
        sqlite3_prepare_v3(database, text, -1, SQLITE_PREPARE_PERSISTENT, &m_statement, nullptr);
    }
    ~Bare() { sqlite3_finalize(m_statement); }
    Q_DISABLE_COPY_MOVE(Bare)

    qint64 run(const QByteArray& code)
    {
        qint64 sum = 0;
        if (sqlite3_bind_parameter_count(m_statement))
            sqlite3_bind_text(m_statement, 1, code.constData(), int(code.size()), SQLITE_STATIC);
        while (sqlite3_step(m_statement) == SQLITE_ROW)
            for (int i = 0; i < sqlite3_column_count(m_statement); ++i) {
                sqlite3_column_text(m_statement, i);
                sum += sqlite3_column_bytes(m_statement, i);
            }
        sqlite3_reset(m_statement);
        return sum;
    }

private:
    sqlite3_stmt* m_statement = nullptr;
};

struct Case {
    const char* name;
    const char* bare;
    QString before; ///< T-SQL up to the code
    QString after;
    bool writes;
};

struct Medians {
    double bare;
    double ours;
};

double medianOf(std::vector<qint64>& times)
{
    std::nth_element(times.begin(), times.begin() + std::ptrdiff_t(times.size() / 2), times.end());
    return double(times[times.size() / 2]);
}

template <typename Step> void measure(std::vector<qint64>& times, Step step)
{
    QElapsedTimer timer;
    timer.start();
    step();
    times.push_back(timer.nsecsElapsed());
}

qint64 runOurs(PooledFactory& factory, const QString& text, const Case& one, const QString& tsql)
{
    Connection connection = factory.open(text);
    if (one.writes) return connection.execute(tsql);
    qint64 sum = 0;
    const auto rows = connection.open(tsql);
    for (int i = 0; i < rows.fieldCount() && !rows.eof(); ++i)
        sum += rows.field(i).isNull();
    return sum;
}

/// All readers with every field as text, as a grid takes them.
void measureWholeTable(sqlite3* database, PooledFactory& factory, const QString& text, const Sizes& sizes)
{
    Bare bare(database, "select code,name,status,term,quota,canre from reader");
    std::vector<qint64> bareTimes;
    std::vector<qint64> ourTimes;
    for (int round = 0; round < 20; ++round) {
        measure(bareTimes, [&] { bare.run({}); });
        measure(ourTimes, [&] {
            qsizetype sum = 0;
            Connection connection = factory.open(text);
            for (auto rows = connection.open(u"select code,name,status,term,quota,canre from reader");
                 !rows.eof(); rows.next())
                for (int i = 0; i < rows.fieldCount(); ++i)
                    sum += rows.field(i).text().size();
        });
    }
    std::printf("%-28s %10.0f %10.0f     (a row of 6 texts)\n", "whole table",
        medianOf(bareTimes) / sizes.readers, medianOf(ourTimes) / sizes.readers);
}

Medians run(
    sqlite3* database, PooledFactory& factory, const QString& text, const Case& one, const Sizes& sizes)
{
    Bare bare(database, one.bare);
    std::vector<qint64> bareTimes;
    std::vector<qint64> ourTimes;
    for (int round = 0; round < sizes.rounds; ++round) {
        const QByteArray code = codeOf(round, sizes).toUtf8();
        measure(bareTimes, [&] { bare.run(code); });
        const QString tsql = one.after.isNull() ? one.before : one.before + codeOf(round, sizes) + one.after;
        measure(ourTimes, [&] { runOurs(factory, text, one, tsql); });
    }
    return {medianOf(bareTimes), medianOf(ourTimes)};
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOption({u"quick"_s, {}});
    options.process(application);
    const Sizes sizes = options.isSet(u"quick"_s) ? Sizes {200, 40} : Sizes();
    const QStringList folders = options.positionalArguments();
    const QTemporaryDir folder(folders.isEmpty() ? QString() : folders.first() + u"/bench-XXXXXX"_s);
    const QString path = folder.filePath(u"bench.db"_s);
    const SystemClock clock;
    const sql::Schema schema = sql::readSchema(Script);
    createEmbedded(path, schema, clock, [&](Connection& created) { fill(created, sizes.readers); });
    PooledFactory factory(schema, clock);
    const QString text
        = u"PROVIDER=MSDASQL;DSN=%1;UID=demo;PWD=demo;Database=%2;"_s.arg(BuiltInDataSource, path);
    const SqliteDriver bare(path, clock);
    const Case cases[] {
        {"select by code, 6 columns",
            "select status,term,quota,onloan,quota-onloan,canre from reader where code=?",
            u"select status,term,quota,onloan,quota-onloan,canre from reader  where Code='"_s, u"'"_s, false},
        {"count by code and date",
            "select count(readerid) from reader where code=? and term<'2004-03-09 08:05:03.000'",
            u"Select count(readerid) From reader Where code='"_s, u"' And term<'2004-03-09 8:05:03'"_s,
            false},
        {"no row", "select status from reader where status<>'x' and code='none' and ?<>''",
            u"select status from reader where status<>'x' and code='none' and '"_s, u"'<>''"_s, false},
        {"getdate", "select getdate()", u"select getdate()"_s, {}, false},
        {"update by code", "update reader set onloan=onloan+1 where code=?",
            u"update reader set onloan=onloan+1 where code='"_s, u"'"_s, true},
    };
    std::printf("%-28s %10s %10s %10s\n", "statement (ns)", "bare", "ours", "added");
    for (const Case& one : cases) {
        const auto medians = run(bare.handle().get(), factory, text, one, sizes);
        std::printf("%-28s %10.0f %10.0f %10.0f\n", one.name, medians.bare, medians.ours,
            medians.ours - medians.bare);
    }
    measureWholeTable(bare.handle().get(), factory, text, sizes);
}
