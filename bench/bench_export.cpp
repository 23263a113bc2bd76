// What a spreadsheet of 200,000 rows and 12 columns costs, beside the same cells read by bare SQLite and
// written by the bare library. Median seconds of three rounds each, by turns, and the peak of the memory.
//
//   bench_export [rows | --quick]

#include "output/export_ops.h"
#include "platform/db/pooled_factory.h"
#include "support/test_library.h"

#include "bench/alternate.h"

#include <QCoreApplication>
#include <QFile>

#include <cstdio>
#include <sqlite3.h>
#include <sys/resource.h>
#include <xlsxwriter.h>

using namespace quilla;

namespace {

constexpr int Texts = 8; // then two dates, a number, an amount
constexpr int Columns = 12;

class NoProgress final : public Progress {
public:
    void begin() override { }
    void setTotal(qsizetype) override { }
    void setDone(qsizetype) override { }
    bool goOn() override { return true; }
    void end() override { }
};

class NoProgram final : public SpreadsheetProgram {
public:
    explicit NoProgram(QString folder)
        : m_folder(std::move(folder))
    {
    }
    QString folder() const override { return m_folder; }
    bool show(const QString& file) override { return QFile::remove(file); }
    void showFolder(const QString&) override { }

private:
    QString m_folder;
};

const QString Select = u"select readercode,name,barcode,bookname,cause,oprater,memo,name as n2,opratedate,"
                       "opratedate as d2,7 as days,sfmoney from fkk"_s;

void fill(TestLibrary& library, int rows)
{
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    for (int row = 0; row < rows; ++row)
        conn.execute(
            u"insert into fkk(readercode,name,barcode,bookname,cause,oprater,memo,opratedate,sfmoney) "
            "values('R%1','读者%1','B%1','图书的正题名 %1','超期','王馆员','备注','2004-03-0%2',12.5)"_s
                .arg(row)
                .arg(row % 9 + 1));
    conn.commit();
}

ExportLayout layout()
{
    ExportLayout result {u"bench"_s, {}};
    const QStringList fields {u"readercode"_s, u"name"_s, u"barcode"_s, u"bookname"_s, u"cause"_s,
        u"oprater"_s, u"memo"_s, u"n2"_s, u"opratedate"_s, u"d2"_s, u"days"_s, u"sfmoney"_s};
    for (const QString& field : fields)
        result.columns.push_back({field, field, 10});
    result.columns.back().format = CellFormat::Money;
    return result;
}

void writeBare(const char* base, const char* file)
{
    sqlite3* db = nullptr;
    sqlite3_open(base, &db);
    sqlite3_stmt* row = nullptr;
    const char* select
        = "select readercode,name,barcode,bookname,cause,oprater,memo,name,julianday(opratedate)-2415018.5,"
          "julianday(opratedate)-2415018.5,7,sfmoney from fkk";
    if (sqlite3_prepare_v2(db, select, -1, &row, nullptr) != SQLITE_OK) std::puts(sqlite3_errmsg(db));
    lxw_workbook_options options {};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* book = workbook_new_opt(file, &options);
    lxw_format* dates = workbook_add_format(book);
    format_set_num_format(dates, "yyyy-mm-dd");
    lxw_worksheet* sheet = workbook_add_worksheet(book, nullptr);
    for (lxw_row_t line = 0; sqlite3_step(row) == SQLITE_ROW; ++line) {
        for (int col = 0; col < Texts; ++col)
            worksheet_write_string(sheet, line, lxw_col_t(col),
                reinterpret_cast<const char*>(sqlite3_column_text(row, col)), nullptr);
        for (int col = Texts; col < Columns; ++col)
            worksheet_write_number(sheet, line, lxw_col_t(col), sqlite3_column_double(row, col),
                col < Texts + 2 ? dates : nullptr);
    }
    sqlite3_finalize(row);
    sqlite3_close(db);
    workbook_close(book);
}

long peakMegabytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

template <typename Work> double seconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.elapsed()) / 1000;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QString asked = QCoreApplication::arguments().value(1);
    const int rows = asked == u"--quick" ? 500 : asked.isEmpty() ? 200'000 : asked.toInt();
    TestLibrary library;
    fill(library, rows);
    NoProgress progress;
    NoProgram program(library.folder.path());
    const Exporter exporter {library.session, progress, program};
    const QByteArray base = QFile::encodeName(library.folder.filePath(u"library.db"_s));
    const QByteArray file = QFile::encodeName(library.folder.filePath(u"bare.xlsx"_s));
    std::vector<double> ours;
    std::vector<double> bare;
    for (int round = 0; round < 3; ++round) {
        bare.push_back(seconds([&] { writeBare(base.constData(), file.constData()); }));
        const long before = peakMegabytes();
        ours.push_back(seconds([&] { exportList(exporter, layout(), Select, NothingToPrint); }));
        if (round == 0) std::printf("peak memory: bare %ld MB, ours %ld MB\n", before, peakMegabytes());
    }
    const QString complaints = library.prompt.takeComplaints();
    if (!complaints.isEmpty()) std::puts(qPrintable(complaints));
    std::printf("%d rows x %d: ours %.2f s, bare %.2f s, ratio %.2f\n", rows, Columns, medianOf(ours),
        medianOf(bare), medianOf(ours) / medianOf(bare));
}
