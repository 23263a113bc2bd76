#include "exceptions/dunning_ops.h"
#include "output/report_designs.h"
#include "platform/report/report_previews.h"
#include "report/pdf_text.h"
#include "support/cases.h"
#include "support/test_library.h"

using namespace quilla;

namespace {

/// Writes each report to a PDF file and keeps what stands on its pages.
class PdfPages final : public ReportViewer {
public:
    explicit PdfPages(TestLibrary& library)
        : m_previews(reportDesigns(), library.prompt, library.clock, [] { return QString(); })
    {
    }
    void showReport(const QString& name, Recordset& rows, const ReportTexts& texts) override
    {
        for (const ReportDesign& design : reportDesigns())
            if (design.name == name)
                pages = textsOf(*m_previews.layOut(design, rows, texts), *m_previews.fonts());
    }
    void showChart(const Chart&) override { }
    QStringList pages;

private:
    ReportPreviews m_previews;
};

/// The heading of a notice, then each line's barcode, reader and other party.
QString noticeOn(const QString& page)
{
    static const QRegularExpression heading(u"日 (.*?) ?书 名 条形码"_s);
    static const QRegularExpression line(
        u"书名\\d+ (B\\d) (R\\d) 2026-\\d\\d-\\d\\d 2026-\\d\\d-\\d\\d(?: (?!报表|书名)(\\S+))?"_s);
    QString text = heading.match(page).captured(1) + u':';
    for (auto found = line.globalMatch(page); found.hasNext();) {
        const auto match = found.next();
        text += u' ' + match.captured(1) + u'/' + match.captured(2) + u'/' + match.captured(3);
    }
    return text;
}

} // namespace

/// Dunning notices as they come out of the printer, one reader or unit a page.
class TestNoticesPaper : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void notices_data()
    {
        cases<QString, QString, QString>({
            {"readers of one name, and without a name",
                {u"readercode"_s, u"barcode"_s,
                    u"王一 超期图书如下：: B1/R1/Ban1 B4/R1/Ban1; 王一 超期图书如下：: B2/R2/ban1; : B3/R3/Ban2"_s}},
            {"a unit in two spellings, in the order of the list",
                {u"readunit"_s, u"barcode desc"_s,
                    u"Ban1 超期图书如下：: B4/R1/王一 B2/R2/王一 B1/R1/王一; Ban2 超期图书如下：: B3/R3/"_s}},
        });
    }

    void notices()
    {
        const auto [groupField, order, shown] = given<QString, QString, QString>();
        TestLibrary library; // it is 2026-03-10
        library.reader(u"R1"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"Ban1"_s}});
        library.reader(u"R2"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"ban1"_s}});
        library.reader(u"R3"_s, {{u"name"_s, u"null"_s}, {u"readunit"_s, u"Ban2"_s}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B1"_s, u"R1"_s}, {u"B2"_s, u"R2"_s}, {u"B3"_s, u"R3"_s}, {u"B4"_s, u"R1"_s}}) {
            library.copy(barcode);
            library.loan(barcode, reader, u"2026-03-01"_s);
        }
        PdfPages paper(library);
        PrintDunningNotices(library.session, paper, groupField, {.order = order});
        QStringList found;
        for (const QString& page : paper.pages)
            found.append(noticeOn(page));
        QCOMPARE(found.join(u"; "_s), shown);
        QCOMPARE(library.prompt.takeComplaints(), QString());
    }
};

QTEST_MAIN(TestNoticesPaper)
#include "test_notices_paper.moc"
