#include "exceptions/notice_style_form.h"
#include "exceptions/overdue_filter_form.h"
#include "exceptions/overdue_form.h"
#include "exceptions/overdue_result_form.h"
#include "support/screen_test.h"

using namespace quilla;

namespace {

const QString NothingForPaper = u"没有需要打印的信息！"_s;

} // namespace

/// The overdue list, and the statistics that lead to notices.
class TestOverdueForms : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        // it is 2026-03-10
        m->reader(u"R1"_s, {{u"name"_s, u"王一"_s}, {u"readunit"_s, u"一班"_s}});
        m->reader(u"R2"_s, {{u"name"_s, u"李'二"_s}, {u"readunit"_s, u"二班"_s}});
        for (const auto& [barcode, reader] :
            {std::pair {u"B1"_s, u"R2"_s}, {u"B3"_s, u"R1"_s}, {u"B2"_s, u"R1"_s}, {u"B9"_s, u"R1"_s}}) {
            m->loan(
                barcode, reader, barcode == u"B9" ? u"2026-03-10"_s : u"2026-03-0%1"_s.arg(barcode.back()));
        }
        m_work->reports.fields = {u"barcode"_s};
    }

private Q_SLOTS:
    /// A loan due today is not overdue, and the days are those of the server.
    void listsEveryOverdueLoan()
    {
        ChaoQifrm list(m_work->place);
        QCOMPARE(columnOf(list.Grid1, 0) + list.lCounts.text(), u"B1 B3 B2记录数：3"_s);
        QStringList line;
        for (int col = 2; col < list.Grid1.Cols(); ++col)
            line.append(list.Grid1.TextMatrix(list.Grid1.cells().findRow(u"B1"_s, 0), col));
        QCOMPARE(line.join(u' '), u"二班 R2 李'二 2026-02-20 2026-03-01 9"_s);
        m->send(u"delete from jhsk"_s);
        list.loadData({}, {});
        QCOMPARE(columnOf(list.Grid1, 0) + list.lCounts.text(), u"记录数：0"_s);
        list.PrintOverdueList(); // a report without lines
        QCOMPARE(m_work->reports.shown, QStringList({u"JHSKcqReport"_s}));
        m->prompt.expect(u"没有需要输出的信息！"_s).titled(OperationTitle);
        list.Command1[4].click();
    }

    /// The field of the last sort orders what is printed; a dismissed menu sorts by every column from the
    /// left.
    void sortsByTheMenu()
    {
        ChaoQifrm list(m_work->place);
        QStringList offered;
        int choice = 15;
        list.Menu.setChooser([&](const QStringList& items) { return offered = items, choice; });
        list.Command1[0].click();
        QCOMPARE(offered.join(QString()),
            u"条 形 码-书    名-读者单位-读者证号-读者姓名-借书日期-应还日期-超期天数"_s);
        QCOMPARE(columnOf(list.Grid1, 0), u"B3 B2 B1"_s);
        choice = 0;
        list.Command1[0].click();
        QCOMPARE(columnOf(list.Grid1, 0), u"B1 B2 B3"_s);
        list.PrintOverdueList();
        QCOMPARE(m_work->reports.shown.join(u' '), u"JHSKcqReport B3 B2 B1"_s);
    }

    /// The condition stays in force for printouts, and also where a load found no connection. A bad one gives
    /// an empty list, and no report since the select fails.
    void remembersTheSearch()
    {
        ChaoQifrm list(m_work->place);
        list.loadData(u"readunit='一班'"_s, u"barcode Asc"_s);
        QCOMPARE(columnOf(list.Grid1, 0), u"B2 B3"_s);
        const auto stored = m->settings.values;
        m->settings.values.clear();
        m->prompt.expectStart(u"无法取得正确连接数据库的信息!"_s).answer(Answer::No);
        list.loadData(u"barcode='B1'"_s, {});
        QCOMPARE(columnOf(list.Grid1, 0) + list.lCounts.text(), u"B2 B3记录数：2"_s);
        m->settings.values = stored;
        list.PrintOverdueList();
        QCOMPARE(m_work->reports.shown.join(u' '), u"JHSKcqReport B1"_s);
        list.loadData(u"nix=1"_s, {});
        QCOMPARE(columnOf(list.Grid1, 0) + list.lCounts.text(), u"记录数：0"_s);
        list.PrintOverdueList();
        QCOMPARE(m_work->reports.shown.size(), 2);
    }

    void exportsAndPrintsNotices()
    {
        ChaoQifrm list(m_work->place);
        list.loadData(u"cqday>7"_s, u"barcode"_s);
        m->failAt({});
        list.Command1[4].click();
        QCOMPARE(m_work->sheets.shown.size(), 1);
        QVERIFY(m->sent.last().endsWith(u"From JHSKCQV where cqday>7 order by barcode"_s));
        int choice = 3;
        list.Menu.setChooser([&](const QStringList&) { return choice; });
        m_work->reports.fields.clear(); // notices come in groups
        list.Command1[1].click();
        choice = 5;
        list.Command1[1].click();
        QCOMPARE(m_work->reports.shown.join(u' '), u"JHSKCQRpt JHSKCQRpt"_s);
        QCOMPARE(list.labRemark.text(), QString());
        list.Command1[1].click(); // on the same day
        QCOMPARE(list.labRemark.text(), u"今天 09:30 已打印过集体催还单，请勿重复发放。"_s);
    }

    /// Reader looks at name and code, not at the barcode that its caption names; quotes are doubled.
    void filtersTheStatistics_data()
    {
        cases<QString, QString, QString, QString>({
            {"nothing ticked", {{}, {}, {}, u"B1 B3 B2 3"_s}},
            {"part of a name", {u"李'"_s, {}, {}, u"B1 1"_s}},
            {"part of a code", {u"r1"_s, {}, {}, u"B3 B2 2"_s}},
            {"a barcode", {u"B1"_s, {}, {}, u" 0"_s}},
            {"unit, with a wild card", {{}, u"_班"_s, {}, u"B1 B3 B2 3"_s}},
            {"reader and unit", {u"R1"_s, u"二"_s, {}, u" 0"_s}},
            {"type", {{}, {}, u"无此类型"_s, u" 0"_s}},
        });
    }
    void filtersTheStatistics()
    {
        const auto [reader, unit, type, shown] = given<QString, QString, QString, QString>();
        CqTjFrm filter(m_work->place);
        CQListFrm result(m_work->place);
        m_work->host.toOpen = &result;
        appear(filter);
        const auto tick
            = [&](int box, const QString& text) { filter.Check1[box].setChecked(!text.isEmpty()); };
        tick(0, reader);
        tick(1, unit);
        tick(2, type);
        filter.Text1.setText(reader);
        filter.Combo1.setEditText(unit);
        filter.Combo2.setEditText(type);
        filter.CmdOK.click();
        QCOMPARE(m_work->host.opened.last() + (filter.isVisible() ? u" open"_s : u""_s), u"CQListFrm"_s);
        QCOMPARE(columnOf(result.Grid1, 5) + u' ' + result.iRowCount.text(), shown);
        QCOMPARE(result.Grid1.Cols(), 8);
    }

    /// It stands before what is ticked; with the order it goes onto the sheet too.
    void conditionHandedIn()
    {
        CqTjFrm filter(m_work->place);
        CQListFrm result(m_work->place);
        m_work->host.toOpen = &result;
        filter.Check1[0].setChecked(true);
        filter.Text1.setText(u"R"_s);
        filter.loadData(u"cqday<9"_s, u"barcode Desc"_s);
        QCOMPARE(columnOf(result.Grid1, 5), u"B3 B2"_s);
        m->failAt({});
        result.cmdToExcel.click();
        QVERIFY(m->sent.last().endsWith(
            u" where cqday<9 And (name Like '%R%' OR readercode Like '%R%') order by barcode Desc"_s));
    }

    void filterFillsItsLists()
    {
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"二班"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        auto& filter = opened<CqTjFrm>(m_work->place);
        filter.Check1[1].setChecked(true);
        QCOMPARE(filter.Combo1.itemText(0) + filter.Combo1.itemText(1) + filter.Combo1.currentText(),
            u"二班一班"_s);
        filter.Combo1.setCurrentIndex(1);
        filter.Check1[1].setChecked(false);
        QCOMPARE(filter.Combo1.count(), 0);
        QCOMPARE(filter.Combo1.currentText(), QString());
        filter.Text1.setFocus();
        QTest::keyClick(&filter.Text1, Qt::Key_Return);
        QCOMPARE(focusName(), u"Check1(1)"_s);
    }

    /// An empty result refuses both printouts; a cancelled choice prints nothing and takes nothing away.
    void resultPrints()
    {
        auto& result = opened<CQListFrm>(m_work->place);
        for (QPushButton* button : {&result.CmdList, &result.CmdPrintRpt}) {
            m->prompt.expect(NothingForPaper).titled(OperationTitle).icon(Icon::Information);
            button->click();
        }
        result.loadData({}, u"barcode"_s);
        inDialog<ShowStyleFrm>([](ShowStyleFrm& style) {
            QCOMPARE(style.Label1.text(), u"针对某个读者打印催还单"_s);
            style.Option1[1].click();
            QCOMPARE(style.Label1.text(), u"针对某个单位打印催还单"_s);
        }); // and is closed by its box
        result.CmdPrintRpt.click();
        QCOMPARE(result.GroupField + m_work->reports.shown.join(u' '), QString());
        result.CmdList.click();
        QCOMPARE(m_work->reports.shown.join(u' '), u"JHSKcqReport B1 B2 B3"_s);
        m_work->reports.fields.clear();
        inDialog<ShowStyleFrm>([](ShowStyleFrm& style) { style.CmdOK.click(); });
        result.CmdPrintRpt.click();
        QCOMPARE(result.GroupField + m_work->reports.shown.last(), u"readercodeJHSKCQRpt"_s);
        result.loadData(u"nix=1"_s, {});
        QCOMPARE(columnOf(result.Grid1, 5) + result.iRowCount.text(), u"0"_s);
        m->prompt.expect(NothingForPaper);
        result.CmdList.click();
    }
};

QTEST_MAIN(TestOverdueForms)
#include "test_overdue_forms.moc"
