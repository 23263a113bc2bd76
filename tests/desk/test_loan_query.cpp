#include "desk/desk_form.h"
#include "desk/loan_query_ops.h"
#include "platform/report/report_viewer.h"
#include "support/cases.h"
#include "support/fine_double.h"
#include "support/screen_host.h"
#include "support/test_library.h"
#include "support/window_steps.h"

using namespace quilla;

namespace {

class Viewer final : public ReportViewer {
public:
    void showReport(const QString& design, Recordset& rows, const ReportTexts&) override
    {
        QStringList barcodes;
        for (; !rows.eof(); rows.next())
            barcodes.append(rows.field(u"BarCode").text());
        shown.append(design + u':' + barcodes.join(u','));
    }
    QStringList shown;
};

} // namespace

/// The desk's query page.
class TestLoanQuery : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m = std::make_unique<TestLibrary>();
        m->reader(u"R1"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"一班"_s}});
        m->reader(
            u"R2"_s, {{u"name"_s, u"王二"_s}, {u"readunit"_s, u"二班"_s}, {u"readerclass"_s, u"教师"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"二班"_s}});
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"教师"_s}});
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s})
            m->copy(barcode);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        m->loan(u"B2"_s, u"R2"_s, u"2026-03-21"_s);
        m->loan(u"B3"_s, u"R2"_s, u"2026-03-22"_s);
        m_viewer.shown.clear();
        m_desk = std::make_unique<TsjhFrm>(m->session, m_host, m_fines, m_viewer);
        m_desk->SSTab1.setCurrentIndex(2);
        appear(*m_desk);
    }

    void cleanup()
    {
        m_desk.reset();
        QCOMPARE(m->prompt.takeComplaints(), QString());
    }

    /// Only what is ticked and not blank narrows; quotes and place marks stay text.
    void conditions()
    {
        LoanQuery query;
        query.parts = {{{true, u"  "_s}, {false, u"b"_s}, {false, u"c"_s}, {true, {}}}};
        QCOMPARE(loanStatement(query), QString());
        query.parts = {{{true, u"o'n %1"_s}, {true, u"b"_s}, {true, u"c"_s}, {true, u"d"_s}}};
        QCOMPARE(loanStatement(query).section(u" where "_s, 1),
            u"(name Like '%o''n %1%' OR readercode ='o''n %1') And (readunit ='b') And (readerclass ='c') And (bookname Like '%d%' OR barcode = 'd')"_s);
    }

    void findsByTheBoxes_data()
    {
        cases<int, QString, QStringList>({
            {"part of a name", {0, u"王"_s, QStringList {u"B1"_s, u"B2"_s, u"B3"_s}}},
            {"card", {0, u"r2"_s, QStringList {u"B2"_s, u"B3"_s}}},
            {"unit", {1, u"一班"_s, QStringList {u"B1"_s}}},
            {"type", {2, u"教师"_s, QStringList {u"B2"_s, u"B3"_s}}},
            {"title", {3, u"书名3"_s, QStringList {u"B3"_s}}},
            {"barcode", {3, u"B1"_s, QStringList {u"B1"_s}}},
            {"nothing", {3, u"' or 1=1 --"_s, QStringList {}}},
        });
    }

    void findsByTheBoxes()
    {
        const auto [tick, text, barcodes] = given<int, QString, QStringList>();
        page().Check2[tick].click();
        QWidget* const boxes[] = {&page().Text2[0], &page().Combo1, &page().Combo2, &page().Text2[1]};
        QVERIFY(boxes[tick]->hasFocus());
        if (auto* list = qobject_cast<QComboBox*>(boxes[tick]))
            list->setEditText(text);
        else
            static_cast<TextBox*>(boxes[tick])->setText(text);
        if (barcodes.isEmpty())
            m->prompt.expect(u"找不到任何匹配的记录"_s).titled(u"操作提示").icon(Icon::Information);
        page().CmdFind.click();
        QCOMPARE(found(), barcodes);
        QCOMPARE(page().Grid3.Rows(), 13);
        if (barcodes.contains(u"B1")) QCOMPARE(page().Grid3.TextMatrix(1, 6), u"2026-03-20"_s);
    }

    void ticksFillAndEmpty()
    {
        page().Check2[1].click();
        QCOMPARE(page().Combo1.count(), 2);
        page().Combo1.setEditText(u"二班"_s);
        page().Check2[2].click();
        QCOMPARE(page().Combo1.currentText(), u"二班"_s);
        page().Text2[0].setText(u"x"_s);
        page().Check2[1].click();
        QCOMPARE(page().Combo1.count(), 0);
        QCOMPARE(page().Combo1.currentText(), QString());
        QCOMPARE(page().Text2[0].text(), QString());
        page().CmdFind.click(); // ticked but empty: nothing happens, nothing is said
    }

    void printsTheLastThatFound()
    {
        page().CmdPrint.click();
        page().Check2[3].click();
        type(page().Text2[1], u"B1"_s);
        page().Text2[1].setText(u"B9"_s);
        m->prompt.expect(u"找不到任何匹配的记录"_s);
        page().CmdFind.click();
        page().CmdPrint.click();
        QCOMPARE(m_viewer.shown, QStringList {u"JHSKReport:B1"_s});
    }

private:
    LoanQueryPage& page() { return m_desk->Query; }

    QStringList found()
    {
        QStringList barcodes;
        for (int row = 1; row < page().Grid3.Rows(); ++row)
            if (!page().Grid3.TextMatrix(row, 2).isEmpty()) barcodes.append(page().Grid3.TextMatrix(row, 2));
        barcodes.sort();
        return barcodes;
    }

    std::unique_ptr<TestLibrary> m;
    NoHost m_host;
    FineDouble m_fines;
    Viewer m_viewer;
    std::unique_ptr<TsjhFrm> m_desk;
};

QTEST_MAIN(TestLoanQuery)
#include "test_loan_query.moc"
