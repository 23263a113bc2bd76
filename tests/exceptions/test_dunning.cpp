#include "exceptions/dunning_ops.h"
#include "output/report_designs.h"
#include "platform/report/report_previews.h"
#include "report/pdf_text.h"
#include "support/field_texts.h"
#include "support/library_test.h"
#include "support/report_double.h"

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

/// The heading of a notice and the caption of its last column, then each line's barcode, reader and last
/// text.
QString noticeOn(const QString& page)
{
    static const QRegularExpression heading(u"日 (.*?) ?书 名 条形码 读者号 借书日期 应还日期 (\\S+)"_s);
    static const QRegularExpression line(
        u"书名\\d+ (B\\d) (R\\d) 2026-\\d\\d-\\d\\d 2026-\\d\\d-\\d\\d(?: (?!报表|书名)(\\S+))?"_s);
    const auto head = heading.match(page);
    QString text = head.captured(1) + u'[' + head.captured(2) + u']';
    for (auto found = line.globalMatch(page); found.hasNext();) {
        const auto match = found.next();
        text += u' ' + match.captured(1) + u'/' + match.captured(2) + u'/' + match.captured(3);
    }
    return text;
}

} // namespace

/// The dunning notices as they come out of the printer, one reader or unit a page, and the groups that they
/// are made of.
class TestDunning : public LibraryTest {
    Q_OBJECT

    void fill() override
    {
        // it is 2026-03-10
        m->session.ConnectionText = m->connectionText;
        m->reader(u"R1"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"Ban1"_s}});
        m->reader(u"R2"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"ban1"_s}});
        m->reader(u"R3"_s, {{u"name"_s, u"null"_s}, {u"readunit"_s, u"Ban2"_s}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B1"_s, u"R1"_s}, {u"B2"_s, u"R2"_s}, {u"B3"_s, u"R1"_s}, {u"B4"_s, u"R3"_s}})
            m->loan(barcode, reader, u"2026-03-0%1"_s.arg(barcode.back()));
        m->loan(u"B9"_s, u"R2"_s, u"2026-03-10"_s); // due today
    }

private Q_SLOTS:
    void notices_data()
    {
        cases<QString, QString, QString, QString>({
            {"a reader each, also of one name and without a name",
                {u"readercode"_s, {}, u"barcode"_s,
                    u"王一 超期图书如下：[读者单位] B1/R1/Ban1 B3/R1/Ban1; 王一 超期图书如下：[读者单位] B2/R2/ban1; [读者单位] B4/R3/Ban2"_s}},
            {"a unit each, in two spellings, in the order asked for",
                {u"readunit"_s, {}, u"barcode desc"_s,
                    u"Ban2 超期图书如下：[读者姓名] B4/R3/; Ban1 超期图书如下：[读者姓名] B3/R1/王一 B2/R2/王一 B1/R1/王一"_s}},
            {"one reader",
                {u"readercode"_s, u"readercode='r2'"_s, {}, u"王一 超期图书如下：[读者单位] B2/R2/ban1"_s}},
            {"nobody", {u"readunit"_s, u"readunit='三班'"_s, {}, u"[读者姓名]"_s}},
        });
    }

    void notices()
    {
        const auto [groupField, condition, order, shown] = given<QString, QString, QString, QString>();
        PdfPages paper(*m);
        PrintDunningNotices(m->session, paper, groupField, {{}, condition, order});
        QStringList found;
        for (const QString& page : paper.pages)
            found.append(noticeOn(page));
        QCOMPARE(found.join(u"; "_s), shown);
    }

    void failuresAreSilent()
    {
        ReportDouble reports;
        PrintDunningNotices(m->session, reports, u"readercode"_s, {.condition = u"nix=1"_s});
        m->session.ConnectionText = u"nonsense"_s;
        PrintDunningNotices(m->session, reports, u"readercode"_s, {});
        QCOMPARE(reports.shown, QStringList());
        QVERIFY(!m->session.error.isSet());
    }

    /// Keys compare as the database compares texts; null is a key of its own.
    void groupsOfAShapedResult()
    {
        Connection conn = m->factory.open(m->connectionText);
        const QString select
            = u"select 'a' as k,1 as n union all select null,2 union all select 'A ',3 union all select '',4 union all select null,5"_s;
        const auto shaped = [&](const QString& by) {
            return conn.openShaped(
                u"SHAPE {select * from (%1) x order by n} AS c COMPUTE c BY %2"_s.arg(select, by));
        };
        Recordset groups = shaped(u"k"_s);
        conn.close(); // what it brought is kept
        QCOMPARE(groups.recordCount(), 3);
        QStringList found;
        for (; !groups.eof(); groups.next()) {
            Recordset child = groups.child(u"C");
            const qsizetype count = child.recordCount();
            const QStringList numbers = fieldTexts(child, u"n");
            QCOMPARE(numbers.size(), count);
            found.append(numbers.join(u'+'));
        }
        QCOMPARE(found.join(u' '), u"1+3 2+5 4"_s);
        conn = m->factory.open(m->connectionText);
        QVERIFY_THROWS_EXCEPTION(Error, shaped(u"nix"_s));
        groups = shaped(u"k"_s);
        QVERIFY_THROWS_EXCEPTION(Error, groups.child(u"other"));
    }
};

QTEST_MAIN(TestDunning)
#include "test_dunning.moc"
