// What one PostgreSQL carries: desks, each a process of its own, that scan without a pause. A round is a
// card, a charge, a renewal and a return, each with what the window reads to show it. Prints the scans a
// second and, of each kind of scan, the median, the 99th percentile and the worst; at the end the library is
// checked.
//
//   QUILLA_POSTGRES_OPTIONS="-c fsync=on -c full_page_writes=on" tests/postgres/start.sh
//   build/release/postgres-socket bench_desks [--desks N] [--seconds N] [--pause MILLISECONDS] [--quick]
//   bench_desks --connection TEXT      on a server of your own: an empty database, which is left filled
//   tests/postgres/stop.sh build/release/postgres-socket

#include "bench/alternate.h"
#include "bench/no_prompt.h"
#include "database/check.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "desk/discharge_ops.h"
#include "desk/reader_panel_ops.h"
#include "desk/renewal_ops.h"
#include "frame/sublib.h"
#include "platform/db/pooled_factory.h"
#include "support/memory_settings.h"
#include "support/postgres_database.h"
#include "support/quiet_fines.h"
#include "support/quiet_session.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDateTime>
#include <QProcess>

#include <array>
#include <cstdio>
#include <map>
#include <random>
#include <thread>

using namespace quilla;

namespace {

using Times = std::map<QString, std::vector<double>>; ///< milliseconds of each kind of scan

struct Load {
    QString connectionText;
    int desks = 20;
    int seconds = 60;
    int pause = 0; ///< milliseconds between two scans
    ScaleOptions scale;
};

void must(bool done, const char* what, const QString& code)
{
    if (!done) qFatal("not done: %s of %s", what, qPrintable(code));
}

/// One desk. A copy lies at one desk at a time, so each desk has copies of its own; readers go to any.
class Desk {
public:
    Desk(const Load& load, int number)
        : m_load(load)
        , m_random(std::mt19937::result_type(number))
        , m_first(load.scale.loans + load.scale.readers + number)
    {
        storeConnectionText(m_session, load.connectionText);
        m_session.OperatorName = u"desk"_s;
    }

    /// The first round, which opens the connection, is over before the moment comes from which on times
    /// count.
    void work(qint64 from)
    {
        serveNext();
        m_times.clear();
        sleep(from - QDateTime::currentMSecsSinceEpoch() + int(m_random() % unsigned(m_load.pause + 1)));
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < m_load.seconds * 1000)
            serveNext();
    }
    void tell() const
    {
        for (const auto& [kind, times] : m_times)
            for (const double time : times)
                std::printf("%s %.3f\n", qPrintable(kind), time);
    }

private:
    static void sleep(qint64 milliseconds)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

    void serveNext()
    {
        serve(scaleReaderCode(int(m_random() % unsigned(m_load.scale.readers)) + 1), nextCopy());
    }

    QString nextCopy()
    {
        const QString barcode = scaleBarcode(m_copy);
        m_copy += m_load.desks;
        if (m_copy > m_load.scale.copies) m_copy = m_first;
        return barcode;
    }

    void serve(const QString& reader, const QString& barcode)
    {
        timed(u"card"_s, [&] { showReader(reader); });
        timed(u"charge"_s, [&] {
            must(ChargeBook(m_session, m_view, barcode, reader) == Charged, "charge", barcode);
            showReader(reader);
        });
        timed(u"renewal"_s, [&] {
            const qint16 count = CheckRenewal(m_session, m_view, barcode);
            must(count != RenewalRefused, "renewal", barcode);
            takeBack(barcode);
            must(RechargeBook(m_session, m_view, count, barcode, reader) == Charged, "renewal", barcode);
            showReturns(reader);
        });
        timed(u"return"_s, [&] {
            takeBack(barcode);
            showReturns(reader);
        });
    }
    void showReader(const QString& reader)
    {
        ShowReader(m_session, m_view, reader);
        ShowLoans(m_session, m_view, reader);
    }
    void showReturns(const QString& reader) { ShowReturns(m_session, m_view, reader, Returns::Today); }
    void takeBack(const QString& barcode)
    {
        must(DischargeBook(m_session, m_view, m_fines, barcode) == Discharged, "return", barcode);
    }

    template <typename Scan> void timed(const QString& kind, Scan scan)
    {
        QElapsedTimer timer;
        timer.start();
        scan();
        m_times[kind].push_back(double(timer.nsecsElapsed()) / 1e6);
        sleep(m_load.pause);
    }

    const Load& m_load;
    std::mt19937 m_random;
    const int m_first; ///< none before it is held for anybody
    int m_copy = m_first;
    Times m_times;
    MemorySettings m_settings;
    NoPrompt m_prompt;
    NoEditor m_editor;
    NoDesk m_view;
    const SystemClock m_clock;
    const sql::Schema m_schema = librarySchema();
    PooledFactory m_factory {m_schema, m_clock};
    Session m_session {m_settings, m_prompt, m_clock, m_factory, m_editor};
    QuietFines m_fines {m_session};
};

/// Of loans that are overdue already the readers need not care.
void fill(PooledFactory& factory, const Load& load)
{
    Connection connection = factory.open(load.connectionText);
    connection.begin(OnFailure::EndTransaction);
    createLibrary(connection);
    insertInitialRows(connection, u"bench"_s);
    fillScaleData(connection, load.scale);
    connection.execute(u"update dzk set bookcount=30000,recount=10,ifcanre=1");
    connection.commit();
    connection.gatherStatistics();
}

std::vector<std::unique_ptr<QProcess>> startDesks(const Load& load, const QStringList& options)
{
    const qint64 from = QDateTime::currentMSecsSinceEpoch() + 1000 + 100 * load.desks + 4 * load.pause;
    std::vector<std::unique_ptr<QProcess>> desks;
    for (int number = 1; number <= load.desks; ++number) {
        auto& desk = desks.emplace_back(std::make_unique<QProcess>());
        desk->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        desk->start(QCoreApplication::applicationFilePath(),
            options
                + QStringList {u"--connection"_s, load.connectionText, u"--desk"_s, QString::number(number),
                    u"--from"_s, QString::number(from)});
    }
    return desks;
}

Times timesOf(std::vector<std::unique_ptr<QProcess>> desks)
{
    Times times;
    for (const auto& desk : desks) {
        desk->waitForFinished(-1);
        if (desk->exitStatus() != QProcess::NormalExit || desk->exitCode() != 0) qFatal("a desk failed");
        for (const QByteArray& line : desk->readAllStandardOutput().split('\n'))
            if (const auto parts = line.split(' '); parts.size() == 2)
                times[QString::fromLatin1(parts[0])].push_back(parts[1].toDouble());
    }
    return times;
}

void tell(const Load& load, Times times)
{
    std::size_t scans = 0;
    for (auto& [kind, each] : times) {
        std::ranges::sort(each);
        scans += each.size();
        std::printf("%s: %zu, median %.1f ms, 99 %% within %.1f ms, worst %.1f ms\n", qPrintable(kind),
            each.size(), each[each.size() / 2], each[each.size() * 99 / 100], each.back());
    }
    std::printf(
        "%d desks, %d s: %.0f scans a second\n", load.desks, load.seconds, double(scans) / load.seconds);
}

int check(PooledFactory& factory, const Load& load)
{
    Connection connection = factory.open(load.connectionText);
    const std::vector<Finding> findings = checkLibrary(connection);
    for (const Finding& finding : findings)
        std::printf("%s: %zu rows\n", qPrintable(finding.rule), finding.rows.size());
    std::printf("check: %s\n", findings.empty() ? "clean" : "findings");
    return findings.empty() ? 0 : 1;
}

Load loadOf(const QCommandLineParser& options)
{
    const bool quick = options.isSet(u"quick"_s);
    const auto number = [&](const QString& name, int usual) {
        return options.isSet(name) ? options.value(name).toInt() : usual;
    };
    Load load {options.value(u"connection"_s), number(u"desks"_s, quick ? 3 : 20),
        number(u"seconds"_s, quick ? 1 : 60), number(u"pause"_s, 0), {}};
    if (quick) load.scale = {.readers = 200, .copies = 4000, .history = 500, .loans = 400, .today = {}};
    load.scale.today = QDate::currentDate();
    return load;
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    const QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions(
        {{u"quick"_s, {}}, {u"desks"_s, {}, u"N"_s}, {u"seconds"_s, {}, u"N"_s}, {u"pause"_s, {}, u"N"_s},
            {u"connection"_s, {}, u"TEXT"_s}, {u"desk"_s, {}, u"N"_s}, {u"from"_s, {}, u"MOMENT"_s}});
    options.process(application);
    Load load = loadOf(options);
    if (options.isSet(u"desk"_s)) {
        Desk desk(load, options.value(u"desk"_s).toInt());
        desk.work(options.value(u"from"_s).toLongLong());
        desk.tell();
        return 0;
    }
    std::optional<PostgresDatabase> server;
    if (load.connectionText.isEmpty()) load.connectionText = server.emplace().connectionText();
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    fill(factory, load);
    tell(load, timesOf(startDesks(load, QCoreApplication::arguments().mid(1))));
    return check(factory, load);
}
