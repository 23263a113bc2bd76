#include "statistics/circulation_form.h"
#include "statistics/fine_statistic_form.h"
#include "statistics/loan_count_form.h"
#include "statistics/query_form.h"
#include "support/screen_test.h"

using namespace quilla;

/// Loans, returns, fines and lost books by condition and date; counts of loans and returns.
class TestCirculationStatistics : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, {{u"readunit"_s, u"一班"_s}});
        m->reader(u"R2"_s, {{u"readunit"_s, u"二班"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"三班"_s}});
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s})
            m->copy(barcode);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-09"_s);
        m->loan(u"B2"_s, u"R2"_s, u"2026-03-20"_s);
        m->insert(u"jhslsk"_s,
            {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, u"B3"_s}, {u"orderdate"_s, u"2026-01-05"_s},
                {u"backdate"_s, u"2026-02-05"_s}});
        m->insert(u"fkk"_s,
            {{u"readercode"_s, u"R1"_s}, {u"barcode"_s, u"B1"_s}, {u"sfmoney"_s, u"1.5"_s},
                {u"cause"_s, u"超期"_s}, {u"opratedate"_s, u"2026-03-05"_s}});
        m->insert(u"BookOut"_s,
            {{u"bookname"_s, u"失书"_s}, {u"cause"_s, u"丢失"_s}, {u"price"_s, u"20"_s},
                {u"outdate"_s, u"2026-03-01"_s}});
    }

private Q_SLOTS:
    /// No brackets, so an OR at the top of a condition binds weaker than the dates.
    void searches()
    {
        const DateLimits march {u"2026-03-01"_s, u"2026-03-31"_s};
        const auto& modes = circulationModes();
        QVERIFY(circulationSearch(modes[1], march, u"a=1 OR b=2"_s, u"c Asc"_s)
                    .statement()
                    .endsWith(u" from JhskV where orderdate between '2026-03-01' And '2026-03-31' And a=1 OR "
                              u"b=2 order by c Asc"));
        QVERIFY(circulationSearch(modes[3], {}, u"a=1"_s, {})
                    .statement()
                    .endsWith(u" where cause='丢失' And a=1"));
        QVERIFY(circulationSearch(modes[3], march, {}, {})
                    .statement()
                    .endsWith(u" where cause='丢失' And opratedate between '2026-03-01' And '2026-03-31'"));
        QVERIFY(circulationSearch(modes[0], {}, {}, {}).statement().endsWith(u" from JhslskV"));
    }

    void listsLoans()
    {
        auto& form = opened<LttjFrm>(m_work->place);
        form.loadData({}, u"barcode Asc"_s);
        QCOMPARE(lineOf(form.Grid1, 1), u"书名1|著者1|B1|2026-02-20|2026-03-09|1.39600694444444"_s);
        QCOMPARE(lineOf(form.Grid1, 2), u"书名2|著者2|B2|2026-02-20|2026-03-20|-9.60399305555556"_s);
        QCOMPARE(form.iRec.text(), u"2"_s);
        form.loadData(u"barcode='B2'"_s, {});
        QCOMPARE(lineOf(form.Grid1, 2), u"|||||"_s);
        QCOMPARE(form.Grid1.Rows(), 12);
    }

    /// The select of the mode before is printed and exported under the head of the new one.
    void aChangeOfTheModeKeepsTheSelect()
    {
        auto& form = opened<LttjFrm>(m_work->place);
        form.CmdPrint.click();
        m->prompt.expect(u"没有可以打印的信息！"_s).icon(Icon::Information);
        form.cmdToExcel.click();
        form.loadData({}, {});
        form.Option1[0].click();
        QCOMPARE(form.iRec.text() + lineOf(form.Grid1, 0),
            u"0书名                  |著 者   |条形码    |借书日期   |应还日期   |还书日期   |操作员"_s);
        m->failAt({});
        m->prompt.expect(u"报表格式为【A4,宽行】,请确认打印机设置正确后再打印!"_s).titled(u"操作提示");
        form.CmdPrint.click();
        QVERIFY(m->sent.last().endsWith(u"from JhskV"));
        QCOMPARE(m_work->reports.shown, QStringList {u"JHLSDataReport"_s});
        QVERIFY(!form.isVisible());
    }

    /// What fails leaves list, count and select; what finds nothing empties them.
    void lostBooksAreNoFines()
    {
        auto& form = opened<LttjFrm>(m_work->place);
        form.Option1[3].click();
        QCOMPARE(form.Grid1.TextMatrix(0, 2), u"条形玛   "_s);
        form.loadData({}, {});
        QCOMPARE(lineOf(form.Grid1, 1), u"失书|||20.00|丢失|2026-03-01|"_s);
        form.loadData(u"sfmoney>1"_s, {});
        QCOMPARE(form.iRec.text() + lineOf(form.Grid1, 1), u"1失书|||20.00|丢失|2026-03-01|"_s);
        form.loadData(u"bookname='x'"_s, {});
        QCOMPARE(form.iRec.text() + lineOf(form.Grid1, 1), u"0||||||"_s);
        m->prompt.expect(u"没有可以打印的信息！"_s);
        form.cmdToExcel.click();
        form.Option1[1].click();
        QCOMPARE(form.Grid1.Cols(), 6);
    }

    void datesComeFirst()
    {
        auto& form = opened<LttjFrm>(m_work->place);
        form.Dates.Check1.setFocus();
        QTest::keyClick(&form.Dates.Check1, Qt::Key_Backtab);
        QCOMPARE(focusName(), u"Option1(1)"_s);
        form.Dates.Check1.click();
        form.Dates.Text1[1].setText(u"3/5/26"_s);
        m->prompt.expect(u"请输入完整的日期格式!(例如:2003-01-01)"_s);
        form.cmdQuery.click();
        form.Dates.Text1[0].setText(u"2026-2"_s);
        form.Dates.Text1[1].setText(u"2026年2月28日"_s);
        inDialog<QueryFrm>([](QueryFrm& query) {
            QCOMPARE(query.LFields.count(), 9);
            query.Command1[1].click();
        });
        form.cmdQuery.click();
        QCOMPARE(form.iRec.text(), u"2"_s);
    }

    /// Every item has its line; what has neither loan nor return stays blank.
    void counts_data()
    {
        cases<CountBy, QString, QStringList>({
            {"readers", {CountBy::Reader, {}, QStringList {u"读者R1|2|1"_s, u"读者R2|1|null"_s}}},
            {"a reader", {CountBy::Reader, u"dzk.readunit='二班'"_s, QStringList {u"读者R2|1|null"_s}}},
            {"units", {CountBy::Unit, {}, QStringList {u"一班|2|1"_s, u"三班|null|null"_s}}},
            {"units of a condition",
                {CountBy::Unit, u"dzk.name='x'"_s, QStringList {u"一班|null|null"_s, u"三班|null|null"_s}}},
            {"types", {CountBy::Type, {}, QStringList {}}},
            {"titles",
                {CountBy::Title, {}, QStringList {u"书名1|1|null"_s, u"书名2|1|null"_s, u"书名3|1|1"_s}}},
            {"a title",
                {CountBy::Title, u"zsk.bookname='书名1'"_s,
                    QStringList {u"书名1|1|null"_s, u"书名2|null|null"_s, u"书名3|null|null"_s}}},
            {"copies", {CountBy::Copy, u"sck.barcode='B3'"_s, QStringList {u"B3|1|1"_s}}},
        });
    }

    void counts()
    {
        const auto [by, condition, expected] = given<CountBy, QString, QStringList>();
        QStringList rows = m->rows(countStatement(by, condition, {}));
        rows.sort();
        QCOMPARE(rows.join(u'\n'), expected.join(u'\n'));
        const DateLimits february {u"2026-02-01"_s, u"2026-02-28"_s};
        m->rows(countStatement(by, condition, february)); // is a statement, too
    }

    void countsByDate()
    {
        const DateLimits january {u"2026-01-01"_s, u"2026-01-31"_s};
        QCOMPARE(m->rows(countStatement(CountBy::Copy, u"sck.barcode='B3'"_s, january)),
            QStringList {u"B3|1|null"_s});
        QCOMPARE(m->rows(countStatement(CountBy::Unit, u"dzk.name='读者R1'"_s, january)).join(u' '),
            u"一班|1|null 三班|null|null"_s);
    }

    void countsGoToTheReport()
    {
        auto& form = opened<LtCountFrm>(m_work->place);
        QVERIFY(form.Frame2.isEnabled() && !form.Frame3.isEnabled());
        form.Option1[1].click();
        QVERIFY(!form.Frame2.isEnabled() && form.Frame3.isEnabled());
        form.Option1[0].click();
        QVERIFY(!form.Option1[1].isChecked() && form.Option2[0].isChecked());
        form.Option1[0].setFocus();
        QTest::keyClick(&form.Option1[0], Qt::Key_Tab);
        QCOMPARE(focusName(), u"Option2(0)"_s);
        form.Option1[1].click();
        m->failAt(u"select"_s);
        form.loadData({}, {});
        QVERIFY(form.isVisible() && m_work->reports.shown.isEmpty());
        m->failAt({});
        form.Dates.Check1.click();
        inDialog<QueryFrm>([](QueryFrm& query) { query.Command1[1].click(); });
        form.CmdSave.click();
        QVERIFY(
            m->sent.last().contains(u" where (orderdate between '2026-03-10' And '2026-03-10') Group by"));
        QCOMPARE(m_work->reports.shown.join(u' ') + m_work->reports.last.title, u"LtTjReport书名"_s);
        QVERIFY(!form.isVisible());
    }

    /// Here the condition has brackets, and the dates have their quotes doubled.
    void finesGoToTheReport()
    {
        auto& form = opened<FkTjFrm>(m_work->place);
        form.Dates.Check1.click();
        form.Dates.Text1[0].setText(u"2026-03-01"_s);
        m->failAt({});
        form.loadData(u"cause='x' OR name='y'"_s, {});
        QVERIFY(m->sent.last().endsWith(u" from FKKV where opratedate between '2026-03-01' And '2026-03-10' "
                                        u"And (cause='x' OR name='y') order by opratedate,cause"));
        QCOMPARE(m_work->reports.shown, QStringList {u"FkDataReport"_s});
        QVERIFY(!form.isVisible());
    }
};

QTEST_MAIN(TestCirculationStatistics)
#include "test_circulation_statistics.moc"
