// What the list of overdue loans costs, from the search to its lines on the screen; and its report and the
// notices of all readers, from the statement to the file that goes to paper. Medians of five rounds.
//
//   bench_overdue_list [loans | --quick]

#include "bench/alternate.h"
#include "database/scale.h"
#include "exceptions/dunning_ops.h"
#include "exceptions/overdue_form.h"
#include "output/report_designs.h"
#include "platform/report/page_output.h"
#include "platform/report/report_previews.h"
#include "support/test_library.h"
#include "support/workplace_double.h"

#include <QApplication>

#include <cstdio>

using namespace quilla;

namespace {

constexpr int LoansOnPaper = 5000;

void fill(TestLibrary& library, int loans)
{
    ScaleOptions options {loans / 4, loans * 2, 0, loans, library.clock.now().date};
    Connection conn = library.factory.open(library.connectionText);
    conn.begin();
    fillScaleData(conn, options);
    conn.execute(u"update jhsk set yhdate='2026-02-01'");
    conn.commit();
}

template <typename Work> double milliseconds(Work work)
{
    std::vector<double> rounds;
    for (int round = 0; round < 5; ++round) {
        QElapsedTimer timer;
        timer.start();
        work();
        rounds.push_back(double(timer.nsecsElapsed()) / 1e6);
    }
    return medianOf(rounds);
}

/// Writes the report to a PDF file instead of showing it.
class OnPaper final : public ReportViewer {
public:
    explicit OnPaper(TestLibrary& library)
        : m_previews(reportDesigns(), library.prompt, library.clock, [] { return QString(); })
        , m_file(library.folder.filePath(u"report.pdf"_s))
    {
    }
    void showReport(const QString& name, Recordset& rows, const ReportTexts& texts) override
    {
        for (const ReportDesign& design : reportDesigns()) {
            if (design.name != name) continue;
            const auto report = m_previews.layOut(design, rows, texts);
            pages = report->pageCount();
            savePdf(*report, *m_previews.fonts(), m_file);
        }
    }
    void showChart(const Chart&) override { }
    int pages = 0;

private:
    ReportPreviews m_previews;
    const QString m_file;
};

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const QString asked = QCoreApplication::arguments().value(1);
    const int loans = asked == u"--quick" ? 200 : asked.isEmpty() ? 20'000 : asked.toInt();
    TestLibrary library;
    fill(library, loans);
    const WorkplaceDouble work(library.session);
    ChaoQifrm list(work.place);
    list.show();
    QCoreApplication::processEvents();
    const double shown = milliseconds([&] {
        list.loadData({}, {});
        QCoreApplication::processEvents();
    });
    std::printf("%s overdue loans on the screen: %.0f ms\n", qPrintable(list.lCounts.text().mid(4)), shown);

    OnPaper paper(library);
    library.send(u"delete from jhsk where jhskid>%1"_s.arg(LoansOnPaper));
    Session& session = library.session;
    const double report = milliseconds([&] {
        Connection conn = session.connections.open(session.ConnectionText);
        Recordset rows = conn.open(
            u"Select barcode,bookname,readunit,readercode,name,orderdate,yhdate,cqday From JHSKCQV");
        paper.showReport(u"JHSKcqReport"_s, rows, {});
    });
    std::printf(
        "report of %d loans, %d pages: %.0f ms\n", std::min(loans, LoansOnPaper), paper.pages, report);
    const double notices = milliseconds([&] { PrintDunningNotices(session, paper, u"readercode"_s, {}); });
    std::printf("their notices, %d pages: %.0f ms\n", paper.pages, notices);
}
