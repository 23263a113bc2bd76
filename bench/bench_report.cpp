// What a report of 2,000 rows costs: until its first page stands in the preview, and as PDF, beside a bare
// QPdfWriter that draws the same texts at the same places. Median milliseconds of rounds by turns.
// usage: bench_report [rows | --quick]

#include "output/report_designs.h"
#include "platform/db/pooled_factory.h"
#include "platform/report/report_preview.h"
#include "platform/report/report_previews.h"
#include "support/test_library.h"

#include "bench/alternate.h"

#include <QApplication>
#include <QPainter>
#include <QPdfWriter>

#include <cstdio>

using namespace quilla;

namespace {

void fill(TestLibrary& library, int rows)
{
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    for (int row = 0; row < rows; ++row)
        conn.execute(
            u"insert into fkk(readercode,name,barcode,bookname,cause,oprater,opratedate,sfmoney) "
            "values('R%1','读者%1','%2','图书的正题名 %1 及其副题名：一部较长的著作的名称','超期','王馆员','2004-03-0%3',12.5)"_s
                .arg(row)
                .arg(1000000 + row)
                .arg(row % 9 + 1));
    conn.commit();
}

const ReportDesign& finesDesign(const ReportCatalog& designs)
{
    return *std::find_if(designs.begin(), designs.end(),
        [](const ReportDesign& design) { return design.name == u"FkDataReport"; });
}

/// The texts alone, with the fonts made beforehand.
void writeBare(const std::vector<ReportPage>& pages, const FontBook& fonts, const QString& file)
{
    QPdfWriter writer(file);
    writer.setResolution(int(TwipsPerInch));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF()));
    QPainter painter(&writer);
    for (std::size_t page = 0; page < pages.size(); ++page) {
        if (page > 0) writer.newPage();
        for (const PlacedText& text : pages[page].texts) {
            painter.setFont(fonts.font(text.font));
            painter.drawText(text.place, text.text);
        }
    }
}

template <typename Work> double milliseconds(Work work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QByteArray asked = argc > 1 ? argv[1] : "";
    const int rows = asked == "--quick" ? 100 : asked.isEmpty() ? 2'000 : asked.toInt();
    TestLibrary library;
    fill(library, rows);
    const ReportCatalog designs = reportDesigns();
    Connection conn = library.factory.open(library.connectionText);
    const QString file = library.folder.filePath(u"report.pdf"_s);
    std::vector<double> firsts;
    std::vector<double> ours;
    std::vector<double> bare;
    for (int round = 0; round < 5; ++round) {
        // as the first report after the start: fonts and all
        ReportPreviews reports(designs, library.prompt, library.clock, [] { return QString(); });
        std::shared_ptr<const ReportLayout> layout;
        firsts.push_back(milliseconds([&] {
            Recordset records = conn.open(u"select * from FkkV");
            layout = reports.layOut(finesDesign(designs), records, {});
            ReportPreview preview(layout, reports.fonts(), library.prompt, {});
            preview.show();
            QCoreApplication::processEvents();
            preview.grab();
        }));
        ours.push_back(milliseconds([&] {
            Recordset records = conn.open(u"select * from FkkV");
            savePdf(*reports.layOut(finesDesign(designs), records, {}), *reports.fonts(), file);
        }));
        std::vector<ReportPage> pages;
        for (int page = 0; page < layout->pageCount(); ++page)
            pages.push_back(layout->page(page));
        bare.push_back(milliseconds([&] { writeBare(pages, *reports.fonts(), file); }));
    }
    std::printf("%d rows: first page in the preview %.0f ms (the very first %.0f ms); PDF %.0f ms, bare %.0f "
                "ms, ratio %.2f\n",
        rows, medianOf(firsts), firsts.front(), medianOf(ours), medianOf(bare),
        medianOf(ours) / medianOf(bare));
}
