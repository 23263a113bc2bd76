#include "statistics/loan_history_form.h"
#include "statistics/ranking_form.h"
#include "statistics/yearly_readers_form.h"
#include "support/screen_test.h"
#include "support/sheet_reader.h"

#include <QDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>

using namespace quilla;

namespace {

void clickIn(QLineEdit& box)
{
    QTest::mouseClick(&box, Qt::LeftButton);
}

} // namespace

/// The rankings, the readers of a year, and the history of a copy or a reader.
class TestRankings : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        m->reader(u"R1"_s, {{u"readunit"_s, u"二'班"_s}});
        m->reader(u"R2"_s, {{u"readunit"_s, u"一班"_s}, {u"readerclass"_s, u"教师"_s}});
        for (const QString& barcode : {u"B1"_s, u"B2"_s})
            m->copy(barcode);
        m->send(u"update zsk set zch=7,fzqfh='/x',docclass='普通图书' where zskid=1"_s);
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s);
        finished(u"R2"_s, u"B1"_s, u"2026-01-05"_s);
        finished(u"R2"_s, u"B2"_s, u"2026-01-06"_s);
        finished(u"gone"_s, u"B2"_s, u"2025-12-30"_s);
    }

private Q_SLOTS:
    /// The length comes before the date.
    void datesAreChecked()
    {
        const QString whole = u"请输入完整的日期格式!例如:2003-01-01"_s;
        const QString right = u"请输入正确的日期格式!例如:2003-01-01"_s;
        const std::tuple<QString, QString, QString> rows[] {{u"2026-1-1"_s, whole, whole},
            {u"01-01-2026"_s, whole, whole}, {u"2026-02-30"_s, right, right}, {u"2026/02/28"_s, {}, {}},
            {{}, u"silent"_s, whole}};
        const auto said = [](const std::optional<Refusal>& refusal) {
            if (!refusal) return QString();
            return refusal->text.isEmpty() ? u"silent"_s : refusal->text;
        };
        for (const auto& [date, titles, readers] : rows) {
            QCOMPARE(said(dateRefusal(titleRanking(), date)), titles);
            QCOMPARE(said(dateRefusal(readerRanking(), date)), readers);
        }
    }

    void titles()
    {
        m->send(u"insert into ztfdl(leibie,mingcheng) values(' I ','文学 ')"_s);
        auto& form = opened<frmtsjh>(m_work->place);
        QCOMPARE(form.Combo1[3].currentText() + form.Combo1[4].currentText(), u"2026-01-012026-12-31"_s);
        QCOMPARE(form.Combo1[0].count(), 2);
        clickIn(form.Text1);
        QVERIFY(form.MSHFlexGrid2.isVisible());
        QTest::keyClick(&form.Text1, Qt::Key_Escape);
        QVERIFY(!form.MSHFlexGrid2.isVisible());
        clickIn(form.Text1);
        const int letter = form.MSHFlexGrid2.cells().findRow(u"I 文学"_s, 0);
        clickLine(form.MSHFlexGrid2, letter);
        QCOMPARE(form.Text1.text(), u"I"_s);
        QVERIFY(!form.MSHFlexGrid2.isVisible() && form.Text1.hasFocus());
        form.Text1.setText(u"i"_s);
        form.Combo1[0].setEditText(u"全部"_s);
        m->failAt({});
        form.Command1[0].click();
        QCOMPARE(calls().join(u'\n'),
            (QStringList(2, u"exec procjhphb '全部','10','2026-01-01','2026-12-31','I' "_s).join(u'\n')));
        QCOMPARE(lineOf(form.MSHFlexgrid1, 1), u"|1|全部|I247/7/x|书名1|著者1|2"_s);
        form.Combo1[0].setEditText(u"二'班"_s);
        form.Command1[0].click();
        QCOMPARE(lineOf(form.MSHFlexgrid1, 1), u"|1|二'班|I247/7/x|书名1|著者1|1"_s);
        form.Combo1[0].setEditText(u"三班"_s);
        form.Command1[0].click(); // the list keeps what it held
        QCOMPARE(form.windowTitle(), u"图书借阅排行榜------没有符合条件的数据。。。。。。"_s);
        QCOMPARE(lineOf(form.MSHFlexgrid1, 1), u"|1|二'班|I247/7/x|书名1|著者1|1"_s);
        form.Combo1[0].setEditText(u"一班"_s);
        form.Combo1[2].setEditText(u"/"_s);
        m->prompt.expectStart(u"["_s).titled(u"操作提示");
        form.Command1[0].click();
        QCOMPARE(form.windowTitle(), u"图书借阅排行榜"_s);
        form.Combo1[2].setEditText(u"1"_s);
        form.Combo1[3].setEditText({});
        form.Command1[1].click();
        QVERIFY(m_work->reports.shown.isEmpty());
        form.Combo1[3].setEditText(u"2026-01-01"_s);
        form.Command1[1].click();
        QCOMPARE(m_work->reports.shown, QStringList {u"JhphbDataReport"_s});
        QVERIFY(!form.isVisible());
    }

    void readers()
    {
        auto& form = opened<dzjyphbFrm>(m_work->place);
        QCOMPARE(form.Text1[2].text(), u"2026-03-10"_s);
        form.Text1[2].setText(u"2026-01-01"_s);
        clickIn(form.Text1[0]);
        QCOMPARE(form.MSHFlexGrid1.Rows(), 3);
        clickIn(form.Text1[1]);
        QVERIFY(!form.MSHFlexGrid1.isVisible());
        form.Text1[0].clear();
        form.Text1[1].clear();
        m->failAt({});
        form.Command1[0].click();
        QCOMPARE(calls().last(), u"exec procdzjyphb  '全部','10','2026-01-01','2026-03-10'"_s);
        QCOMPARE(lineOf(form.MSHFlexGrid2, 1), u"|1|读者R2|教师|一班|2"_s);
        QCOMPARE(form.Text1[1].text(), u"10"_s);
        m->failAt(u"exec"_s);
        m->prompt.expect(u"[语句失败：exec]\n请检查输入、存储过程或数据库？"_s).titled(u"操作提示");
        form.Command1[1].click();
        QVERIFY(form.isVisible());
        m->failAt({});
        form.Command1[1].click();
        QCOMPARE(m_work->reports.shown, QStringList {u"dzjyphbRpt"_s});
        QCOMPARE(m_work->reports.last.captions.value(u"labCong"_s), u"2026年01月01日"_s);
        QVERIFY(!form.isVisible());
    }

    /// Coming to the front is a step of the window, not of a box that closes over it.
    void typeIsAllAgainInFront()
    {
        QMdiArea area;
        auto* form = new dzjyphbFrm(m_work->place);
        QMdiSubWindow* window = area.addSubWindow(form);
        QMdiSubWindow* other = area.addSubWindow(new QLabel(u"x"_s));
        appear(area);
        area.setActiveSubWindow(window);
        form->Text1[0].setText(u"教师"_s);
        QDialog box(&area);
        appear(box);
        box.close();
        appear(area);
        QCOMPARE(form->Text1[0].text(), u"教师"_s);
        area.setActiveSubWindow(other);
        area.setActiveSubWindow(window);
        QCOMPARE(form->Text1[0].text(), u"全部"_s);
    }

    void readersOfAYear()
    {
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        m->insert(u"dzdw"_s, {{u"readunit"_s, u"一班"_s}});
        auto& form = opened<frmndzjytj>(m_work->place);
        form.Text1.setText(u"二〇二六"_s);
        for (const int button : {0, 2, 1}) {
            m->prompt.expect(u"请输入4位数字的年"_s).titled(u"操作提示");
            form.Command1[button].click();
        }
        QVERIFY(form.isVisible());
        form.Text1.setText(u" 2026 "_s);
        clickIn(form.Text2[0]);
        QCOMPARE(form.MSHFlexGrid1.Rows(), 2);
        clickLine(form.MSHFlexGrid1, 1);
        QCOMPARE(form.Text2[0].text(), u"一班"_s);
        form.Command1[0].click();
        QCOMPARE(lineOf(form.MSHFlexGrid2, 1), u"一班|读者R2|教师|R2|2|2|0|0|0|0|0|0|0|0|0|0|0"_s);
        form.cmdToExcel.click();
        QVERIFY(m_work->sheets.shown.value(0).endsWith(u"2026年读者借阅统计报表.xlsx"));
        const QStringList sheet = readBack(m_work->sheets.shown.value(0));
        QVERIFY2(sheet[0].endsWith(u" A1:Q2") && sheet[2].contains(u"\"2026年读者借阅统计报表\" 宋体 14"),
            qPrintable(sheet.mid(0, 3).join(u'\n')));
        QCOMPARE(sheetLine(sheet, 3).replace(u" s"_s, u"|"_s),
            u"s读者单位|读者姓名|读者类型|借书证号|小计|一月|二月|三月|四月|五月|六月|七月|八月|九月|十月|十一月|十二月"_s);
        QCOMPARE(sheetLine(sheet, 4), exportedLine(form.MSHFlexGrid2.cells(), 1, 4));
        m->failAt({});
        form.Text2[0].setText(QString(19, u'x') + u"''"_s);
        form.Text2[1].clear();
        form.Command1[0].click();
        QCOMPARE(calls().last(), u"exec procndztj '2026','%1',''"_s.arg(QString(19, u'x') + u"''"_s));
        QVERIFY(!form.cmdToExcel.isEnabled());
        QCOMPARE(form.windowTitle(), u"年读者借阅统计------没有符合条件的数据。。。。。。"_s);
        form.Command1[2].click();
        QCOMPARE(m_work->reports.last.captions.value(u"labNian"_s), u"2026"_s);
        form.Command1[1].click();
        QVERIFY(!form.isVisible());
    }

    /// The scanner fills the catalogue, the button waits for a click.
    void history()
    {
        auto& form = opened<JylsQueryFrm>(m_work->place);
        QCOMPARE(form.windowTitle(), u"借阅历史情况查询"_s);
        type(form.Text1[0], u"B1"_s);
        QCOMPARE(form.windowTitle(), u"借阅历史统计"_s);
        QCOMPARE(lineOf(form.MSHFlexGrid1, 1), u"|在借|B1|R1|2026-02-20||李馆员"_s);
        QCOMPARE(form.Text1[1].text() + form.Text1[2].text(), u"读者R1R1"_s);
        QCOMPARE(form.Text1[3].text() + form.Text1[5].text(), u"I247/7普通图书"_s);
        clickLine(form.MSHFlexGrid1, 2);
        QCOMPARE(form.Text1[2].text(), u"R2"_s);
        form.Text1[17].setFocus();
        QTest::keyClicks(&form.Text1[17], u"gone"_s);
        form.Command1[2].setFocus();
        form.Command1[2].click();
        QCOMPARE(lineOf(form.MSHFlexGrid1, 1), u"|已还|B2|gone|2025-12-30|2026-03-05|"_s);
        QCOMPARE(form.Text1[1].text() + form.Text1[2].text() + form.Text1[3].text(), u"gone"_s);
        m->send(u"update sck set bookstatus='丢失' where barcode='B2'"_s);
        clickLine(form.MSHFlexGrid1, 1);
        QCOMPARE(form.Text1[4].text(), QString());
        m_work->printer.upright = false;
        m->prompt.expect(u"请用A4纸，并把打印机设为纵向打印"_s).titled(u"操作提示");
        form.Command1[0].click();
        m_work->printer.upright = true;
        form.Command1[0].click();
        QCOMPARE(m_work->reports.last.captions.value(u"labZhongLei"_s)
                + m_work->reports.last.captions.value(u"labTiaoMa"_s),
            u"读者gone"_s);
        QVERIFY(!form.isVisible());
    }

    void historyOfNothing()
    {
        auto& form = opened<JylsQueryFrm>(m_work->place);
        m->prompt.expect(u"请输入图书条码"_s).titled(u"操作提示");
        QTest::keyClick(&form.Text1[0], Qt::Key_Return);
        m->prompt.expect(u"请先检索再打印"_s);
        form.Command1[0].click();
        form.Text1[0].setFocus();
        type(form.Text1[17], u"x"_s);
        QCOMPARE(form.windowTitle(), u"借阅历史统计------没有符合条件的数据。。。。。。"_s);
        m->failAt(u"procjylstj"_s);
        m->prompt.expect(u"[语句失败：procjylstj]\n请检查数据库？"_s);
        QTest::keyClick(&form.Text1[17], Qt::Key_Return);
        m->failAt(u"from sck"_s);
        m->prompt.expect(u"数据库错误,错误原因：语句失败：from sck"_s);
        form.Text1[17].setText(u"R1"_s);
        QTest::keyClick(&form.Text1[17], Qt::Key_Return);
        QCOMPARE(form.Text1[2].text(), u"R1"_s);
    }

private:
    /// What the screen sent; the bodies of procedures are sent by the database's own helper.
    QStringList calls() const { return m->sent.filter(QRegularExpression(u"^[^\n]*$"_s)); }

    void finished(const QString& reader, const QString& barcode, const QString& from)
    {
        m->insert(u"jhslsk"_s,
            {{u"readercode"_s, reader}, {u"barcode"_s, barcode}, {u"orderdate"_s, from},
                {u"yhdate"_s, u"2026-06-01"_s}, {u"backdate"_s, u"2026-03-05"_s}});
    }
};

QTEST_MAIN(TestRankings)
#include "test_rankings.moc"
