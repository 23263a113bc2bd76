// How long the desk takes to answer a scan: a barcode typed with Enter into the real window, until the result
// stands there and is painted. Milliseconds, the median and the worst of the scans, for charges and for
// returns in time, on the embedded database.
//
//   bench_scan [--folder DIR] [--history N] [--quick]

#include "bench/alternate.h"
#include "bench/no_prompt.h"
#include "database/library_schema.h"
#include "database/scale.h"
#include "desk/desk_form.h"
#include "frame/sublib.h"
#include "platform/db/embedded.h"
#include "platform/db/pooled_factory.h"
#include "platform/ui/look/theme.h"
#include "support/fine_double.h"
#include "support/quiet_session.h"
#include "support/window_steps.h"
#include "support/workplace_double.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QTemporaryDir>

#include <cstdio>

using namespace quilla;

namespace {

void tell(const char* what, std::vector<double> milliseconds)
{
    const auto count = int(milliseconds.size());
    const double worst = *std::max_element(milliseconds.begin(), milliseconds.end());
    std::printf("%s: %d scans, median %.1f ms, worst %.1f ms\n", what, count,
        medianOf(std::move(milliseconds)), worst);
}

/// Each code into the box; the result must be `done`.
std::vector<double> scan(TsjhFrm& desk, QWidget& box, const QStringList& codes, const QString& done)
{
    std::vector<double> times;
    QElapsedTimer timer;
    for (const QString& code : codes) {
        desk.tMsg.clear();
        QApplication::processEvents();
        timer.start();
        type(box, code);
        desk.repaint();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (desk.tMsg.text() != done) qFatal("%s: %s", qPrintable(code), qPrintable(desk.tMsg.text()));
    }
    return times;
}

/// The first free copies that are held for nobody.
QStringList freeCopies(PooledFactory& factory, const QString& connectionText, int count)
{
    Connection conn = factory.open(connectionText);
    QStringList codes;
    for (
        Recordset row = conn.open(
            u"select top %1 barcode from sck where borrowstatus=1 and barcode not in (select barcode from yyk) order by barcode"_s
                .arg(count));
        !row.eof(); row.next())
        codes.append(row.field(0).text());
    return codes;
}

} // namespace

int main(int argc, char** argv)
{
    settleTimeZone();
    QApplication application(argc, argv);
    applyTheme(application);
    QCommandLineParser options;
    options.addOptions(
        {{u"quick"_s, {}}, {u"folder"_s, {}, u"DIR"_s, u"."_s}, {u"history"_s, {}, u"N"_s, u"2000000"_s}});
    options.process(application);
    const bool quick = options.isSet(u"quick"_s);
    ScaleOptions scale;
    scale.readers = quick ? 200 : 50'000;
    scale.copies = quick ? 1000 : 200'000;
    scale.history = quick ? 500 : options.value(u"history"_s).toInt();
    scale.loans = scale.copies / 10;
    scale.today = QDate::currentDate();

    const QTemporaryDir folder(options.value(u"folder"_s) + u"/bench-XXXXXX"_s);
    const QString file = folder.filePath(u"bench.db"_s);
    const SystemClock clock;
    const sql::Schema schema = librarySchema();
    createEmbedded(file, schema, clock, [&](Connection& conn) {
        createLibrary(conn);
        insertInitialRows(conn, u"bench"_s);
        fillScaleData(conn, scale);
    });
    FileSettings settings(folder.filePath(u"settings"_s));
    NoPrompt prompt;
    NoEditor editor;
    FineDouble fines;
    PooledFactory factory(schema, clock);
    Session session {settings, prompt, clock, factory, editor};
    storeConnectionText(
        session, u"PROVIDER=MSDASQL;DSN=%1;UID=bench;PWD=;Database=%2;"_s.arg(BuiltInDataSource, file));
    session.OperatorName = u"bench"_s;
    const WorkplaceDouble work(session);
    TsjhFrm desk(work.place, fines);
    appear(desk);

    // Several readers, each with a handful of loans on the page, as at a desk.
    constexpr int ScansAReader = 10;
    const QStringList copies = freeCopies(factory, session.ConnectionText, quick ? 20 : 200);
    std::vector<double> charges;
    for (qsizetype at = 0; at < copies.size(); at += ScansAReader) {
        desk.TxtReaderCode.selectAll();
        type(desk.TxtReaderCode, scaleReaderCode(int(at / ScansAReader) + 1));
        const auto times = scan(desk, desk.TxtBarCode, copies.mid(at, ScansAReader), u"借书成功"_s);
        charges.insert(charges.end(), times.begin(), times.end());
    }
    tell("charge", std::move(charges));
    desk.SSTab1.setCurrentIndex(1);
    tell("return", scan(desk, desk.TxtRetBook, copies, u"还书成功"_s));
    return 0;
}
