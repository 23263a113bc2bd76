// One successful charge through ChargeBook against the same statements on bare sqlite3, on one file with
// the same durability, the two interleaved in blocks. The ratio counts, not the microseconds.
//
//   bench_charge [--readers N] [--copies N] [--history N] [--rounds N] [--folder DIR]

#include "bench/alternate.h"
#include "bench/bare_charge.h"
#include "bench/no_prompt.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/charge_ops.h"
#include "frame/sublib.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "support/quiet_session.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTextStream>

using namespace quilla;

namespace {

int number(const QCommandLineParser& options, const QString& name)
{
    return options.value(name).toInt();
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    QCoreApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{u"readers"_s, {}, u"N"_s, u"50000"_s}, {u"copies"_s, {}, u"N"_s, u"200000"_s},
        {u"history"_s, {}, u"N"_s, u"2000000"_s}, {u"rounds"_s, {}, u"N"_s, u"2000"_s},
        {u"folder"_s, {}, u"DIR"_s}});
    options.process(application);
    QTextStream out(stdout);

    const QTemporaryDir folder(
        (options.isSet(u"folder"_s) ? options.value(u"folder"_s) : u"."_s) + u"/bench-XXXXXX"_s);
    const QString file = folder.filePath(u"bench.db"_s);
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    ScaleOptions scale;
    scale.readers = number(options, u"readers"_s);
    scale.copies = number(options, u"copies"_s);
    scale.history = number(options, u"history"_s);
    scale.loans = scale.copies / 10;
    scale.today = clock.now().date();
    createEmbedded(file, schema, clock, [&](Connection& conn) {
        createLibrary(conn);
        insertInitialRows(conn, u"bench"_s);
        fillScaleData(conn, scale);
        conn.execute(u"update dzk set bookcount=1000,ifcanre=0");
    });

    FileSettings settings(folder.filePath(u"settings"_s));
    NoPrompt prompt;
    NoEditor editor;
    NoDesk desk;
    PooledFactory factory(schema, clock);
    Session session {settings, prompt, clock, factory, editor};
    storeConnectionText(
        session, u"PROVIDER=MSDASQL;DSN=%1;UID=bench;PWD=;Database=%2;"_s.arg(BuiltInDataSource, file));
    session.OperatorName = u"bench"_s;
    BareCharge bare(file.toStdString());

    const auto codes = [&](const QString& select) {
        Connection conn = factory.open(session.ConnectionText);
        QStringList found;
        for (Recordset row = conn.open(select); !row.eof(); row.next())
            found.append(row.field(0).text());
        return found;
    };
    const QStringList readers = codes(
        u"select readercode from dzk where readstatus='有效' and readercode not in (select readercode from jhsk where yhdate<getdate()) and (term is null or term>getdate())"_s);
    // Lendable, and held for nobody: every charge takes the same road.
    const QStringList copies = codes(
        u"select barcode from sck where borrowstatus=1 and bookstatus='库本' and barcode not in (select barcode from yyk)"_s);
    const int rounds = number(options, u"rounds"_s);
    qsizetype next = 0;
    const auto copy = [&] { return copies.at(next++); };
    const auto reader = [&](int round) { return readers[round % readers.size()]; };
    const Medians charge = alternate(
        rounds,
        [&](int round) {
            if (ChargeBook(session, desk, copy(), reader(round)) != Charged) qFatal("a charge was refused");
        },
        [&](int round) { bare.charge(copy().toStdString(), reader(round).toStdString()); });
    out << QStringLiteral("charge on SQLite, %1 readers, %2 copies, %3 history rows, %4 rounds: ours %5 us, "
                          "bare %6 us, ratio %7\n")
               .arg(scale.readers)
               .arg(scale.copies)
               .arg(scale.history)
               .arg(rounds)
               .arg(charge.ours, 0, 'f', 1)
               .arg(charge.bare, 0, 'f', 1)
               .arg(charge.ratio(), 0, 'f', 3);
    return 0;
}
