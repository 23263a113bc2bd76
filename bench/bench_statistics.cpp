// What the statistics cost over many finished loans, in milliseconds: medians of three rounds. The counts
// over all years stand beside bare SQLite, which sends the same statements to the same rows with plain binary
// texts. With QUILLA_TEST_ENGINE=postgres on that server, alone. Put TMPDIR into a memory file system to
// compare.
//
//   bench_statistics [--quick] [finished loans]

#include "bench/alternate.h"
#include "database/scale.h"
#include "support/test_library.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <sqlite3.h>

using namespace quilla;

namespace {

struct Measured {
    const char* name;
    QString statement;
    bool plain = false; ///< also sent to bare SQLite
};

std::vector<Measured> measured(int year)
{
    const QString byReader
        = u"select DZK.name as ItemKey,JHKVR.JsCount,JHLSKVR.HsCount from (DZK left join (select readercode,count(*) as JsCount from JHK Group by readercode) AS JHKVR on DZK.readercode=JHKVR.readercode) left join (select readercode,count(*) as HsCount from JHSLSK Group by readercode) AS JHLSKVR on DZK.readercode=JHLSKVR.readercode"_s;
    const QString byUnit
        = u"select DZDW.readunit as ItemKey,JHKVR.JsCount,JHLSKVR.HsCount from (DZDW left join (select DZK.readunit,count(*) as JsCount from (JHK left join DZK on JHK.readercode=DZK.readercode) Group by DZK.readunit) AS JHKVR on DZDW.readunit=JHKVR.readunit) left join (select DZK.readunit,count(*) as HsCount from (JHSLSK left join DZK on JHSLSK.readercode=DZK.readercode) Group by DZK.readunit) AS JHLSKVR on DZDW.readunit=JHLSKVR.readunit"_s;
    const QString byTitle
        = u"select ZSK.bookname as ItemKey,JHKVB.JsCount,JHLSKVB.HsCount from (ZSK left join (select ZSK.zskid,count(*) as JsCount from JHK left join (SCK left join ZSK on SCK.zskid=ZSK.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销')) on JHK.barcode=SCK.barcode Group by ZSK.zskid) AS JHKVB on zsk.zskid=JHKVB.zskid) left join (select ZSK.zskid,count(*) as HsCount from JHSLSK left join (SCK left join ZSK on SCK.zskid=ZSK.zskid and (sck.bookstatus<>'丢失' and  sck.bookstatus<>'注销')) on JHSLSK.barcode=SCK.barcode Group by ZSK.zskid) AS JHLSKVB on zsk.zskid=JHLSKVB.zskid"_s;
    const QString byCopy
        = u"select SCK.barcode as ItemKey,JHKVB.JsCount,JHLSKVB.HsCount from (SCK left join (select barcode,count(*) as JsCount from JHK Group by barcode) AS JHKVB on sck.barcode=JHKVB.barcode) left join (select barcode,count(*) as HsCount from JHSLSK Group by barcode) AS JHLSKVB on sck.barcode=JHLSKVB.barcode"_s;
    const QString period = u"'%1-01-01','%1-12-31'"_s.arg(year);
    return {
        {"workload of a year", u"exec nianLiuTongTJ '%1'"_s.arg(year)},
        {"classes of a year", u"exec NianJieChuFenLeiTJ '%1'"_s.arg(year)},
        {"readers of a year", u"exec procndztj '%1','',''"_s.arg(year)},
        {"ranking of books", u"exec procjhphb '全部','100',%1,'' "_s.arg(period)},
        {"ranking of readers", u"exec procdzjyphb  '全部','100',%1"_s.arg(period)},
        {"counts by unit", byUnit, true},
        {"counts by reader", byReader, true},
        {"counts by title", byTitle, true},
        {"counts by copy", byCopy, true},
    };
}

void fill(TestLibrary& library, int loans)
{
    ScaleOptions options {50'000, 200'000, loans, 20'000, library.clock.now().date};
    if (loans < 100'000) options = {500, 2'000, loans, 200, library.clock.now().date};
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    fillScaleData(conn, options);
    conn.commit();
    conn.gatherStatistics();
}

qsizetype send(Connection& conn, const QString& statement)
{
    qsizetype rows = 0;
    for (Recordset record = conn.open(statement); !record.eof(); record.next())
        ++rows;
    return rows;
}

double milliseconds(const std::function<void()>& work)
{
    std::vector<double> times;
    for (int round = 0; round < 3; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        times.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return medianOf(times);
}

/// The same rows in a base of their own, whose texts compare byte by byte.
class PlainBase {
public:
    explicit PlainBase(const QString& library)
    {
        sqlite3_open(":memory:", &m_base);
        sqlite3_create_collation(m_base, "QUILLA", SQLITE_UTF8, nullptr,
            [](void*, int leftSize, const void* left, int rightSize, const void* right) {
                return QByteArrayView(static_cast<const char*>(left), leftSize)
                    .compare(QByteArrayView(static_cast<const char*>(right), rightSize));
            });
        run("attach '"_ba + library.toUtf8() + "' as library");
        for (const QByteArray& table : {"dzk"_ba, "dzdw"_ba, "jhsk"_ba, "jhslsk"_ba, "sck"_ba, "zsk"_ba})
            run("create table " + table + " as select * from library." + table);
        for (const QByteArray& index : {"dzk(readercode)"_ba, "jhsk(barcode)"_ba,
                 "jhsk(readercode,yhdate)"_ba, "jhslsk(readercode,backdate)"_ba,
                 "jhslsk(barcode,backdate)"_ba, "sck(barcode)"_ba, "sck(zskid)"_ba})
            run("create index ix_" + QByteArray(index).replace('(', '_').replace(',', '_').replace(')', "")
                + " on " + index);
        run("create unique index ix_zsk on zsk(zskid)");
        run("create view JHK as select readercode,barcode,orderdate from jhsk union all select "
            "readercode,barcode,orderdate from jhslsk");
    }
    ~PlainBase() { sqlite3_close(m_base); }

    qsizetype send(const QString& statement)
    {
        sqlite3_stmt* row = nullptr;
        if (sqlite3_prepare_v2(m_base, statement.toUtf8().constData(), -1, &row, nullptr) != SQLITE_OK)
            std::puts(sqlite3_errmsg(m_base));
        qsizetype rows = 0;
        while (sqlite3_step(row) == SQLITE_ROW)
            ++rows;
        sqlite3_finalize(row);
        return rows;
    }

private:
    void run(const QByteArray& statement)
    {
        char* message = nullptr;
        if (sqlite3_exec(m_base, statement.constData(), nullptr, nullptr, &message) != SQLITE_OK)
            std::puts(message);
        sqlite3_free(message);
    }

    sqlite3* m_base = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString asked = QCoreApplication::arguments().value(1);
    const int loans = asked == u"--quick" ? 2'000 : asked.isEmpty() ? 2'000'000 : asked.toInt();
    TestLibrary library;
    fill(library, loans);
    Connection conn = library.factory.open(library.connectionText);
    const QString file = library.folder.filePath(u"library.db"_s);
    std::optional<PlainBase> plain;
    if (QFile::exists(file)) plain.emplace(file);
    for (const Measured& each : measured(library.clock.now().date.year() - 1)) {
        qsizetype rows = 0;
        const double ours = milliseconds([&] { rows = send(conn, each.statement); });
        std::printf("%-20s %6lld rows  ours %6.0f ms", each.name, static_cast<long long>(rows), ours);
        if (plain && each.plain) {
            const double bare = milliseconds([&] { plain->send(each.statement); });
            std::printf("  bare %6.0f ms  ratio %.2f", bare, ours / bare);
        }
        std::printf("\n");
        std::fflush(stdout);
    }
}
