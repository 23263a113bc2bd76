// One successful charge through ChargeBook on PostgreSQL against the same statements prepared on bare libpq,
// by turns, and what the pool is worth. The ratio counts, not the microseconds.
//
//   tests/postgres/start.sh build/release/postgres-socket
//   bench_charge_pg [--readers N] [--copies N] [--history N] [--rounds N]
//   tests/postgres/stop.sh build/release/postgres-socket

#include "bench/alternate.h"
#include "bench/bare_charge_pg.h"
#include "bench/no_prompt.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "frame/sublib.h"
#include "platform/db/pooled_factory.h"
#include "support/postgres_database.h"
#include "support/quiet_session.h"

#include <QCommandLineParser>
#include <QCoreApplication>

using namespace quilla;

namespace {

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

void fill(Connection conn, const ScaleOptions& scale)
{
    conn.begin(OnFailure::EndTransaction);
    createLibrary(conn);
    insertInitialRows(conn, u"bench"_s);
    fillScaleData(conn, scale);
    conn.execute(u"update dzk set bookcount=1000,ifcanre=0");
    conn.commit();
}

/// Readers without an overdue loan.
QStringList freeReaders(Connection conn)
{
    QStringList readers;
    for (Recordset row
         = conn.open(u"select readercode from dzk where readercode not in (select readercode from jhsk "
                     "where yhdate<getdate())");
         !row.eof(); row.next())
        readers.append(row.field(0).text());
    return readers;
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("TZ"))
        qputenv("TZ", ":/etc/localtime"); // else it is looked up at each date
    QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{u"readers"_s, {}, u"N"_s, u"10000"_s}, {u"copies"_s, {}, u"N"_s, u"100000"_s},
        {u"history"_s, {}, u"N"_s, u"50000"_s}, {u"rounds"_s, {}, u"N"_s, u"4000"_s}});
    options.process(application);
    ScaleOptions scale;
    scale.readers = options.value(u"readers"_s).toInt();
    scale.copies = options.value(u"copies"_s).toInt();
    scale.history = options.value(u"history"_s).toInt();
    scale.loans = scale.copies / 10;
    scale.today = QDate::currentDate();

    const PostgresDatabase database;
    const QString text = database.connectionText();
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    PooledFactory factory(schema, clock);
    fill(factory.open(text), scale);
    database.run("ANALYZE");

    OneText settings(text);
    NoPrompt prompt;
    NoEditor editor;
    NoDesk desk;
    CountingFactory counting(factory);
    Session session {settings, prompt, clock, counting, editor};
    storeConnectionText(session, text);
    session.OperatorName = u"bench"_s;
    sql::Translator translator(sql::Engine::Postgres, schema);
    BareChargePg bare(database.handle(), translator);

    const QStringList readers = freeReaders(factory.open(text));
    int copy = scale.loans + scale.readers; // behind the ones that are out and the ones that are held
    const auto reader = [&](int round) { return readers[round % readers.size()]; };
    const auto charges = [&](int rounds) {
        return alternate(
            rounds,
            [&](int round) {
                if (ChargeBook(session, desk, scaleBarcode(++copy), reader(round)) != Charged)
                    qFatal("a charge was refused");
            },
            [&](int round) { bare.charge(scaleBarcode(++copy).toStdString(), reader(round).toStdString()); });
    };
    charges(100); // plans and pages are warm
    counting.openings = 0;
    const int rounds = options.value(u"rounds"_s).toInt();
    const Medians charge = charges(rounds);
    const double openings = 2.0 * counting.openings / rounds;
    const Medians opening = alternate(
        200,
        [&](int) {
            factory.drain();
            const Connection fresh = factory.open(text);
        },
        [&](int) { const Connection pooled = factory.open(text); });

    QTextStream out(stdout);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(3);
    out << "charge on PostgreSQL, " << scale.readers << " readers, " << scale.copies << " copies, " << rounds
        << " rounds: ours " << charge.ours << " us, bare " << charge.bare << " us, ratio " << charge.ratio()
        << "\n"
        << "an opening: fresh " << opening.ours << " us, from the pool " << opening.bare << " us; "
        << openings << " openings a charge, so without the pool "
        << (charge.ours + openings * opening.ours) / charge.bare << " times bare\n";
    return 0;
}
