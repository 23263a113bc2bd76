// What the reader list costs, from a search to its lines on the screen, beside bare SQLite reading the same
// rows and columns in the same run. Medians of five rounds each, by turns; the slowest and the usual sort by
// a caption; how much memory the filled list takes.
//
//   bench_reader_list [readers | --quick]

#include "database/scale.h"
#include "readers/reader_register_form.h"
#include "support/test_library.h"
#include "support/workplace_double.h"

#include "bench/alternate.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <sqlite3.h>
#include <sys/resource.h>

using namespace quilla;

namespace {

void fill(TestLibrary& library, int readers)
{
    ScaleOptions options {readers, 2, 0, 0, library.clock.now().date};
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    fillScaleData(conn, options);
    conn.commit();
}

/// The length of all texts, so that none is left unread.
qint64 readBare(sqlite3* base)
{
    sqlite3_stmt* row = nullptr;
    const char* select = "select readercode,name,sex,readerclass,readunit,bookcount,orderbook,paperdate,term,"
                         "readstatus from dzk";
    if (sqlite3_prepare_v2(base, select, -1, &row, nullptr) != SQLITE_OK) std::puts(sqlite3_errmsg(base));
    qint64 length = 0;
    while (sqlite3_step(row) == SQLITE_ROW)
        for (int col = 0; col < sqlite3_column_count(row); ++col) {
            sqlite3_column_text(row, col);
            length += sqlite3_column_bytes(row, col);
        }
    sqlite3_finalize(row);
    return length;
}

long peakMegabytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

template <typename Work> double milliseconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

void showSorts(DzglFrm& list)
{
    std::vector<double> times;
    for (int col = ReaderCode; col <= ReaderState; ++col)
        times.push_back(milliseconds([&] {
            list.Grid1.sortBy({col, Qt::DescendingOrder});
            QCoreApplication::processEvents();
        }));
    std::printf("sort by a caption: median %.0f ms, slowest %.0f ms\n", medianOf(times),
        *std::max_element(times.begin(), times.end()));
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QString asked = QCoreApplication::arguments().value(1);
    const int readers = asked == u"--quick" ? 500 : asked.isEmpty() ? 100'000 : asked.toInt();
    TestLibrary library;
    fill(library, readers);
    const WorkplaceDouble work(library.session);
    DzglFrm list(work.place);
    list.show();
    QCoreApplication::processEvents();
    sqlite3* base = nullptr;
    sqlite3_open(QFile::encodeName(library.folder.filePath(u"library.db"_s)).constData(), &base);
    std::vector<double> ours;
    std::vector<double> bare;
    qint64 length = 0;
    for (int round = 0; round < 5; ++round) {
        bare.push_back(milliseconds([&] { length = readBare(base); }));
        const long before = peakMegabytes();
        ours.push_back(milliseconds([&] {
            list.loadData({}, {});
            QCoreApplication::processEvents();
        }));
        if (round == 0)
            std::printf("peak memory: before %ld MB, with the list %ld MB\n", before, peakMegabytes());
    }
    sqlite3_close(base);
    std::printf("%s readers on the screen (%lld bytes): ours %.0f ms, bare %.0f ms, ratio %.2f\n",
        qPrintable(list.iRowCount.text()), static_cast<long long>(length), medianOf(ours), medianOf(bare),
        medianOf(ours) / medianOf(bare));
    showSorts(list);
    library.send(u"update dzk set readstatus='超期'"_s);
    std::printf("the same with every card to be put back to its valid state: %.0f ms\n",
        milliseconds([&] { list.loadData({}, {}); }));
}
