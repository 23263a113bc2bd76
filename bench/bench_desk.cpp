// A charge, a discharge in time and the settlement of an overdue loan at the desk, each against the same
// statements on the bare driver, by turns, on one base; and what the pool is worth. The ratios count, not
// the microseconds. A server and its desk have a machine each, so here each has a core.
//
//   bench_desk [--folder DIR] [--readers N] [--copies N] [--history N] [--rounds N] [--quick]
//   taskset -c 1 tests/postgres/start.sh build/release/postgres-socket
//   taskset -c 0 bench_desk --postgres
//   tests/postgres/stop.sh build/release/postgres-socket

#include "bench/alternate.h"
#include "bench/bare_driver.h"
#include "bench/no_prompt.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "frame/sublib.h"
#include "platform/db/embedded.h"
#include "support/postgres_database.h"
#include "support/quiet_fines.h"
#include "support/quiet_session.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTextStream>

using namespace quilla;

namespace {

struct Sizes {
    ScaleOptions scale;
    int rounds = 0;
};

/// A library of that size on one of the engines, and the bare driver on the same base.
struct Base {
    explicit Base(const sql::Schema& schema)
        : factory(schema, clock)
    {
    }
    SystemClock clock;
    PooledFactory factory;
    std::unique_ptr<QTemporaryDir> folder;
    std::unique_ptr<PostgresDatabase> server;
    std::unique_ptr<BareDriver> bare;
    std::unique_ptr<sql::Translator> translator;
    QString connectionText;
};

void fill(Connection& conn, const ScaleOptions& scale)
{
    createLibrary(conn);
    insertInitialRows(conn, u"bench"_s);
    fillScaleData(conn, scale);
    conn.execute(u"update dzk set bookcount=1000,ifcanre=0");
}

void makeEmbedded(Base& base, const sql::Schema& schema, const QString& folder, const ScaleOptions& scale)
{
    base.folder = std::make_unique<QTemporaryDir>(folder + u"/bench-XXXXXX"_s);
    const QString file = base.folder->filePath(u"bench.db"_s);
    createEmbedded(file, schema, base.clock, [&](Connection& conn) { fill(conn, scale); });
    base.connectionText
        = u"PROVIDER=MSDASQL;DSN=%1;UID=bench;PWD=;Database=%2;"_s.arg(BuiltInDataSource, file);
    base.translator = std::make_unique<sql::Translator>(sql::Engine::Sqlite, schema);
    base.bare = std::make_unique<BareSqlite>(file);
}

void makeOnServer(Base& base, const sql::Schema& schema, const ScaleOptions& scale)
{
    base.server = std::make_unique<PostgresDatabase>();
    base.connectionText = base.server->connectionText();
    Connection conn = base.factory.open(base.connectionText);
    conn.begin(OnFailure::EndTransaction);
    fill(conn, scale);
    conn.commit();
    base.server->run("ANALYZE");
    base.translator = std::make_unique<sql::Translator>(sql::Engine::Postgres, schema);
    base.bare = std::make_unique<BarePostgres>(base.server->handle());
}

QStringList column(Base& base, const QString& select)
{
    QStringList values;
    Connection conn = base.factory.open(base.connectionText);
    for (Recordset row = conn.open(select); !row.eof(); row.next())
        values.append(row.field(0).text());
    return values;
}

/// Free copies held for nobody, each for a reader with no overdue loan: every charge takes the same road.
std::vector<DeskTask> charges(Base& base)
{
    const QStringList readers = column(base,
        u"select readercode from dzk where readercode not in (select readercode from jhsk where yhdate<getdate())"_s);
    const QStringList copies = column(
        base, u"select barcode from sck where borrowstatus=1 and barcode not in (select barcode from yyk)"_s);
    std::vector<DeskTask> works;
    for (const QString& copy : copies)
        works.push_back(
            {{copy.toUtf8(), readers[qsizetype(works.size()) % readers.size()].toUtf8(), {}, {}, {}}});
    return works;
}

/// Loans that are overdue or not, wherever the server's midnight is; a view brings what the fine screen
/// shows.
std::vector<DeskTask> loans(Base& base, bool overdue)
{
    const QDate today = base.clock.now().date;
    const QString due
        = u"%1'%2'"_s.arg(overdue ? QChar(u'<') : QChar(u'>'), isoDate(today.addDays(overdue ? -1 : 1)));
    std::vector<DeskTask> works;
    Connection conn = base.factory.open(base.connectionText);
    for (
        Recordset row = conn.open(
            u"select j.barcode,j.readercode,v.name,v.bookname,j.jhskid from jhsk j join jhskv v on j.barcode=v.barcode where j.yhdate%1 order by j.jhskid"_s
                .arg(due));
        !row.eof(); row.next()) {
        DeskTask work;
        for (std::size_t part = 0; part < work.texts.size(); ++part)
            work.texts[part] = row.field(int(part)).text().toUtf8();
        works.push_back(work);
    }
    return works;
}

class CountingFactory final : public ConnectionFactory {
public:
    explicit CountingFactory(PooledFactory& factory)
        : m_factory(factory)
    {
    }
    Connection open(const QString& text) override
    {
        ++openings;
        return m_factory.open(text);
    }
    int openings = 0;

private:
    PooledFactory& m_factory;
};

/// A desk on the base, and its operations beside the bare driver's.
class Desk {
public:
    Desk(Base& base, int rounds)
        : m_base(base)
        , m_rounds(rounds)
    {
        storeConnectionText(m_session, base.connectionText);
        m_session.OperatorName = u"bench"_s;
    }

    void measureCharge()
    {
        m_charge = measure(u"charge"_s, charges(m_base), [this](const DeskTask& work) {
            return ChargeBook(m_session, m_view, work.barcode(), work.reader()) == Charged;
        });
    }
    void measureReturns()
    {
        const auto giveBack = [this](const DeskTask& work) {
            return DischargeBook(m_session, m_view, m_fines, work.barcode()) == Discharged;
        };
        measure(u"discharge in time"_s, loans(m_base, false), giveBack);
        measure(u"settlement of an overdue loan"_s, loans(m_base, true), giveBack);
    }
    void measurePool();

private:
    Medians measure(const QString& name, std::vector<DeskTask> works,
        const std::function<bool(const DeskTask&)>& operation);

    Base& m_base;
    QTemporaryDir m_home;
    FileSettings m_settings {m_home.filePath(u"settings"_s)};
    NoPrompt m_prompt;
    NoEditor m_editor;
    NoDesk m_view;
    CountingFactory m_counting {m_base.factory};
    Session m_session {m_settings, m_prompt, m_base.clock, m_counting, m_editor};
    QuietFines m_fines {m_session};
    QTextStream m_out {stdout};
    int m_rounds;
    int m_openings = 0; ///< of one charge
    Medians m_charge;
};

/// The last work is the one that is recorded: its loan has a number that no other literal has.
Medians Desk::measure(
    const QString& name, std::vector<DeskTask> works, const std::function<bool(const DeskTask&)>& operation)
{
    const auto must = [&](const DeskTask& work) {
        if (!operation(work)) qFatal("not done: %s", qPrintable(name));
    };
    if (works.size() < 20) qFatal("too few copies for: %s", qPrintable(name));
    m_counting.openings = 0;
    Recording recording
        = record(m_base.factory, *m_base.translator, works.back(), [&] { must(works.back()); });
    m_openings = m_counting.openings;
    works.pop_back();
    m_base.bare->prepare(recording);

    // Plans and pages are warm after the first ones.
    const int rounds = std::min(m_rounds, int(works.size()) * 4 / 5);
    const int warm = std::min(200, int(works.size()) - rounds);
    std::size_t next = 0;
    const auto ours = [&](int) { must(works[next++]); };
    const auto bare = [&](int) { m_base.bare->replay(recording, works[next++]); };
    alternate(warm, ours, bare);
    const Medians medians = alternate(rounds, ours, bare);
    m_out << QString::asprintf("%s: %d statements, %d rounds: ours %.1f us, bare %.1f us, ratio %.3f\n",
        qPrintable(name), int(recording.size()), rounds, medians.ours, medians.bare, medians.ratio());
    m_out.flush();
    return medians;
}

void Desk::measurePool()
{
    const int openings = std::exchange(m_openings, 0);
    const Medians opening = alternate(
        100,
        [&](int) {
            m_base.factory.drain();
            const Connection fresh = m_base.factory.open(m_base.connectionText);
        },
        [&](int) { const Connection pooled = m_base.factory.open(m_base.connectionText); });
    m_out << QString::asprintf("pool: %d openings a charge, each %.0f us fresh and %.2f us from the pool: a "
                               "charge without it is %.1f times bare\n",
        openings, opening.ours, opening.bare, (m_charge.ours + openings * opening.ours) / m_charge.bare);
}

Sizes sizesFrom(const QCommandLineParser& options)
{
    const bool quick = options.isSet(u"quick"_s);
    const auto number = [&](const QString& name, int usual, int small) {
        return options.isSet(name) ? options.value(name).toInt() : quick ? small : usual;
    };
    Sizes sizes;
    sizes.scale.readers = number(u"readers"_s, 10'000, 200);
    sizes.scale.copies = number(u"copies"_s, 200'000, 4000);
    sizes.scale.history = number(u"history"_s, 100'000, 500);
    sizes.scale.loans = sizes.scale.copies / 5;
    sizes.scale.today = QDate::currentDate();
    sizes.rounds = number(u"rounds"_s, 3000, 40);
    return sizes;
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{u"postgres"_s, {}}, {u"quick"_s, {}}, {u"folder"_s, {}, u"DIR"_s, u"."_s},
        {u"readers"_s, {}, u"N"_s}, {u"copies"_s, {}, u"N"_s}, {u"history"_s, {}, u"N"_s},
        {u"rounds"_s, {}, u"N"_s}});
    options.process(application);
    const Sizes sizes = sizesFrom(options);
    const sql::Schema schema = librarySchema();
    Base base(schema);
    if (options.isSet(u"postgres"_s))
        makeOnServer(base, schema, sizes.scale);
    else
        makeEmbedded(base, schema, options.value(u"folder"_s), sizes.scale);

    QTextStream(stdout) << QString::asprintf("%s, %d readers, %d copies, %d history rows\n",
        base.server ? "PostgreSQL" : "SQLite", sizes.scale.readers, sizes.scale.copies, sizes.scale.history);
    Desk desk(base, sizes.rounds);
    desk.measureCharge();
    desk.measurePool();
    desk.measureReturns();
    return 0;
}
