#include "statistics/period_form.h"
#include "support/screen_test.h"
#include "support/sheet_reader.h"

using namespace quilla;

namespace {

enum Statistic { MonthlyWorkload, MonthlyClasses, MonthlyReaders, YearlyWorkload, YearlyClasses };

/// The texts of the labels of a form, by their names.
QString labelTexts(const QWidget& form)
{
    QStringList texts;
    for (const QLabel* label : form.findChildren<QLabel*>())
        if (!label->objectName().isEmpty()) texts.append(label->objectName() + u'=' + label->text());
    texts.sort();
    return texts.join(u' ');
}

} // namespace

/// The statistics over a month or a year.
class TestPeriods : public ScreenTest {
    Q_OBJECT

    void fill() override
    {
        for (const QString& reader : {u"R1"_s, u"R2"_s, u"R3"_s})
            m->reader(reader);
        for (const QString& barcode : {u"B1"_s, u"B2"_s, u"B3"_s, u"B4"_s})
            m->copy(barcode);
        m->insert(u"dzlx"_s, {{u"readerclass"_s, u"学生"_s}});
        m->loan(u"B1"_s, u"R1"_s, u"2026-03-20"_s, {{u"orderdate"_s, u"2026-03-02"_s}});
        finished(u"R2"_s, u"B2"_s, u"2026-03-02"_s, u"2026-03-03"_s);
        finished(u"R1"_s, u"B2"_s, u"2026-02-05"_s, u"2026-03-05"_s);
        finished(u"R3"_s, u"B3"_s, u"2026-02-05"_s, u"2026-03-05"_s);
        m->insert(u"fkk"_s, {{u"sfmoney"_s, u"1234.5"_s}, {u"opratedate"_s, u"2026-03-05"_s}});
    }

private Q_SLOTS:
    void period_data()
    {
        cases<PeriodKind, QString, QString>({
            {"month", {PeriodKind::Month, u"2026-03"_s, u"2026-3 2026-3-01 2026-3-31"_s}},
            {"February of a leap year", {PeriodKind::Month, u"2024-2 "_s, u"2024-2 2024-2-01 2024-2-29"_s}},
            {"December", {PeriodKind::Month, u"2026-12"_s, u"2026-12 2026-12-01 2026-12-31"_s}},
            {"no month 13", {PeriodKind::Month, u"2026-13"_s, {}}},
            {"half a month", {PeriodKind::Month, u"2026-  "_s, {}}},
            {"empty mask", {PeriodKind::Month, u"    -  "_s, {}}},
            {"year", {PeriodKind::Year, u" 2048"_s, u"2048 2048-01-01 2048-12-31"_s}},
            {"first year", {PeriodKind::Year, u"1901"_s, u"1901 1901-01-01 1901-12-31"_s}},
            {"before it", {PeriodKind::Year, u"1900"_s, {}}},
            {"after the last", {PeriodKind::Year, u"2049"_s, {}}},
            {"fraction", {PeriodKind::Year, u"2026.5"_s, {}}},
            {"no year", {PeriodKind::Year, {}, {}}},
        });
    }

    void period()
    {
        const auto [kind, typed, expected] = given<PeriodKind, QString, QString>();
        const auto period = readPeriod(kind, typed);
        QCOMPARE(period ? period->text() + u' ' + period->firstDay() + u' ' + period->lastDay() : QString(),
            expected);
    }

    /// Rates are worked out in whole numbers; what ends in half a hundredth goes up.
    void formats()
    {
        const std::tuple<qint64, qint64, QString> rates[] {{1, 3, u"33.33%"_s}, {2, 3, u"66.67%"_s},
            {1, 16, u"6.25%"_s}, {1, 800, u"0.13%"_s}, {1, 0, u"0.00%"_s}, {0, 5, u"0.00%"_s},
            {5, -1, u"0.00%"_s}, {24'000'000, 7, u"342,857,142.86%"_s}};
        for (const auto& [part, whole, text] : rates)
            QCOMPARE(percentage(part, whole), text);
        const std::pair<QString, QString> amounts[] {{u"0"_s, u"0.00"_s}, {u"999.995"_s, u"1,000.00"_s},
            {u"1234567.1"_s, u"1,234,567.10"_s}, {u"-1234.5"_s, u"-1,234.50"_s}, {u"-123"_s, u"-123.00"_s},
            {{}, {}}};
        for (const auto& [amount, text] : amounts)
            QCOMPARE(groupedMoney(amount), text);
    }

    /// Two lent, three returned; R1 and R2 borrowed, all three were there. Four copies, one lost.
    void workloadOfAMonth()
    {
        m->send(u"update sck set bookstatus='丢失' where barcode='B4'"_s);
        open(MonthlyWorkload);
        QCOMPARE(m_form->Box.textDate.Text(), u"2026-03"_s);
        QVERIFY(!m_form->cmdToExcel.isEnabled() && !m_form->labReaderCount.isVisible());
        m->failAt({});
        m_form->cmdNewSelect.click();
        QCOMPARE(calls().size(), 9);
        QCOMPARE(calls()[2],
            u"select count(*) as counts from   ( select distinct readercode from jhslsk where year(backdate)='2026'  and  month(backdate)='3' and readercode not in (select distinct readercode from jhsk where year(orderdate)='2026'  and  month(orderdate)='3')) as TempTable"_s);
        QCOMPARE(lineOf(m_form->Grid1, 5), u"5|0|2|0|1,234.50|2|0"_s);
        QCOMPARE(lineOf(m_form->Grid1, 32), u"合计|2|3|0|1,234.50|5|0"_s);
        QCOMPARE(labelTexts(m_form->Frame1),
            u"LabBiLv(0)=800.00% LabBiLv(1)=1,200.00% LabBiLv(2)=800.00% labBookHuanHui=100.00% labBookJieChu=100.00% labReaderCount=3"_s);
        QVERIFY(m_form->labReaderCount.isVisible());
        QCOMPARE(m_form->Frame1.title(), u"流量统计结果"_s);
        m->prompt.expect(u"暂不提供该功能！"_s).titled(u"操作提示");
        m_form->cmdClick[1].click();
    }

    /// The selects of a year have no quotes.
    void workloadOfAYear()
    {
        open(YearlyWorkload);
        m->failAt({});
        type(m_form->Box.textDate, u"2026"_s);
        m_form->cmdNewSelect.click();
        QCOMPARE(calls()[1],
            u"select count(*) as counts from   (select distinct readercode from jhsk where year(orderdate)=2026) as TempTable"_s);
        QCOMPARE(lineOf(m_form->Grid1, 13), u"合计|4|3|0|1,234.50|7|0"_s);
        QCOMPARE(m_form->LabBiLv[0].text(), u"1,200.00%"_s);
    }

    /// The lines are asked for again and the rates are those of the last run, whatever was typed since.
    void printsTheLastRun()
    {
        open(MonthlyWorkload);
        m_form->cmdNewSelect.click();
        m_form->Box.textDate.setText(u"2026-02"_s);
        finished(u"R2"_s, u"B4"_s, u"2026-03-09"_s, u"2026-03-09"_s);
        QString paper;
        m_work->printer.look = [&](QWidget& form) {
            auto* grid = form.findChild<FlexGrid*>();
            paper = form.objectName() + u' ' + grid->TextMatrix(32, 1) + u' ' + labelTexts(form);
        };
        m->prompt.expect(u"请将打印机设置为【A4--纵向打印】\n设置正确后点击确定按钮！"_s).titled(u"操作提示");
        m_form->cmdClick[2].click();
        QCOMPARE(paper,
            u"frmYueLiuTongPrint 3 Title=2026年3月流通工作量统计报表 labBiLv(0)=600.00% labBiLv(1)=1,200.00% labBiLv(2)=600.00% labBiLv(3)=100.00% labBiLv(4)=100.00% labDateJian(0)=2026-3-01 labDateJian(1)=2026-3-31 labReaderCount=3 labRiQi=2026-03-10 09:30:15"_s);
        QVERIFY(m_form->isVisible());
        m_form->cmdToExcel.click();
        QVERIFY(m_work->sheets.shown.value(0).endsWith(u"2026年3月流通工作量统计报表.xlsx"));
        m_form->cmdChart.click();
        QCOMPARE(m_work->reports.chart.series.size(), 6u);
        QCOMPARE(m_work->reports.chart.series[3].bars[4].value, 1234.5);
    }

    /// Range of the title, captions, widths and the last line, cell by cell.
    void exports_data()
    {
        cases<Statistic, QString, QString>({
            {"workload of a month",
                {MonthlyWorkload,
                    u"35 A1:G2 A=11 B=11 C=11 D=11 E=11 F=11 G=11 2026年3月流通工作量统计报表 第几天 注销册数"_s,
                    u"s合计 n2 n3 n0 n1234.5 n5 n0"_s}},
            {"workload of a year",
                {YearlyWorkload,
                    u"16 A1:G2 A=11 B=11 C=11 D=11 E=11 F=11 G=11 2026年流通工作量统计报表 月份 注销册数"_s,
                    u"s合计 n4 n3 n0 n1234.5 n7 n0"_s}},
            {"classes of a month",
                {MonthlyClasses, u"35 A1:X2"_s + widths(24, 6) + u" 2026年3月图书借出统计报表 第几天 小计"_s,
                    u"s合计"_s + QString(u" n0"_s).repeated(8) + u" n2"_s + QString(u" n0"_s).repeated(13)
                        + u" n2"_s}},
            {"classes of a year",
                {YearlyClasses, u"16 A1:X2"_s + widths(24, 6) + u" 2026年图书借出分类统计报表 月份 小计"_s,
                    u"s合计"_s + QString(u" n0"_s).repeated(8) + u" n4"_s + QString(u" n0"_s).repeated(13)
                        + u" n4"_s}},
            {"readers of a month",
                {MonthlyReaders,
                    u"4 A1:AG2 A=11"_s + widths(33, 6).mid(4) + u" 2026年3月读者借阅统计报表 读者类型 31号"_s,
                    u"s学生 n2 n0 n2"_s + QString(u" n0"_s).repeated(29)}},
        });
    }

    void exports()
    {
        const auto [statistic, head, last] = given<Statistic, QString, QString>();
        open(statistic);
        m_form->cmdNewSelect.click();
        m_form->cmdToExcel.click();
        const QStringList sheet = readBack(m_work->sheets.shown.value(0));
        QCOMPARE(headOf(sheet), head);
        const int lines = m_form->Grid1.Rows() - 1;
        QCOMPARE(sheetLine(sheet, lines + 3), last);
        for (int row = 1; row <= lines; ++row)
            QCOMPARE(sheetLine(sheet, row + 3),
                exportedLine(m_form->Grid1.cells(), row, statistic == MonthlyReaders));
    }

    void classesAndReaders()
    {
        open(MonthlyClasses);
        QCOMPARE(m_form->Grid1.TextMatrix(0, 0), u"日期"_s);
        m_form->cmdNewSelect.click();
        QCOMPARE(m_form->Grid1.TextMatrix(0, 0), u"第几天"_s);
        QCOMPARE(m_form->Grid1.TextMatrix(32, 23), u"2"_s);
        QString paper;
        m_work->printer.look = [&](QWidget& form) {
            paper = form.findChild<FlexGrid*>()->TextMatrix(0, 0) + u' ' + labelTexts(form);
        };
        m->prompt.expect(u"请将打印机设置为【A4--横向打印】\n设置正确后点击确定按钮！"_s);
        m_form->cmdClick[2].click();
        QVERIFY2(paper.startsWith(u"日期 Title=2026年3月图书借出统计报表 ")
                && paper.contains(u" labReaderCount=2 "),
            qPrintable(paper));
        m_form->cmdChart.click();
        QCOMPARE(
            m_work->reports.chart.series[0].bars[8].label + m_work->reports.chart.series[0].bars[8].valueText,
            u"I类2"_s);

        open(MonthlyReaders);
        m_form->Box.textDate.setText(u"2020-01"_s);
        m_form->cmdNewSelect.click();
        QCOMPARE(m_form->windowTitle(), u"读者借阅月统计报表------没有符合条件的数据。。。。。。"_s);
        m_form->Box.textDate.setText(u"2026-03"_s);
        m_form->cmdNewSelect.click();
        QCOMPARE(m_form->windowTitle(), u"读者借阅月统计报表"_s);
        QCOMPARE(lineOf(m_form->Grid1, 1).left(10), u"学生|2|0|2|0"_s);
        QCOMPARE(m_form->Grid1.Cols(), 33);
        m->prompt.expect(u"请将打印机设置为【A4--横向(宽行)打印】\n设置正确后点击确定按钮！"_s);
        m_form->cmdClick[2].click();
        QCOMPARE(m_work->reports.shown.last(), u"ydztjRtp"_s);
        QCOMPARE(m_work->reports.last.captions.value(u"labYue"_s), u"2026年3月"_s);
    }

    /// No word, no statement: the focus goes back to the box.
    void refusesInSilence()
    {
        open(YearlyClasses);
        m->failAt({});
        type(m_form->Box.textDate, u"2049"_s);
        m_form->cmdNewSelect.click();
        QVERIFY(m_form->Box.textDate.hasFocus());
        QCOMPARE(m->sent, QStringList());
    }

    /// An empty run leaves the buttons; an export then has nothing, and no figure of the run before stays.
    void emptyAndFailingRuns()
    {
        open(MonthlyWorkload);
        m_form->cmdNewSelect.click();
        m_form->Box.textDate.setText(u"2020-01"_s);
        m_form->cmdNewSelect.click();
        QCOMPARE(lineOf(m_form->Grid1, 1), u"||||||"_s);
        QCOMPARE(m_form->LabBiLv[0].text(), QString());
        QVERIFY(m_form->cmdToExcel.isEnabled());
        m->prompt.expect(u"没有需要导出的数据！"_s);
        m_form->cmdToExcel.click();
        QCOMPARE(m_form->windowTitle(), u"流通工作量月统计报表"_s);
        m->failAt(u"TempTable"_s);
        m_form->Box.textDate.setText(u"2026-03"_s);
        m->prompt.expect(u"出现意外错误！详细信息如下：\n语句失败：TempTable"_s).titled(u"操作提示");
        m_form->cmdNewSelect.click();
        QCOMPARE(m_form->Frame1.title(), u"流量统计结果"_s);
    }

    void calendar()
    {
        open(MonthlyClasses);
        m_form->Box.labMonthhh.click();
        QVERIFY(m_form->Box.MonthView.isVisible());
        m_form->Box.MonthView.setSelectedDate(QDate(2025, 12, 24));
        m_form->Box.cmdDate.click();
        QCOMPARE(m_form->Box.textDate.Text(), u"2025-12"_s);
        QVERIFY(!m_form->Box.MonthView.isVisible());
        m_form->Box.labMonthhh.click();
        m_form->Box.labMonthhh.click();
        QVERIFY(!m_form->Box.MonthView.isVisible());
    }

private:
    void open(Statistic statistic)
    {
        m_form = &opened<PeriodStatisticFrm>(m_work->place, periodStatistics()[statistic]);
    }

    /// What the screen sent; the bodies of procedures are sent by the database's own helper.
    QStringList calls() const { return m->sent.filter(QRegularExpression(u"^[^\n]*$"_s)); }

    static QString widths(int columns, int width)
    {
        QString text;
        for (int col = 0; col < columns; ++col) {
            const QChar letter(u'A' + col % 26);
            text += u" %1%2=%3"_s.arg(col < 26 ? QString() : u"A"_s, letter).arg(width);
        }
        return text;
    }

    /// "<rows> <title's cells> <widths> <title> <first caption> <last caption>"
    static QString headOf(const QStringList& sheet)
    {
        const QStringList captions = sheet.filter(QRegularExpression(u"^[A-Z]+3 "_s));
        const auto text = [](const QString& cell) { return cell.section(u'"', 1, 1); };
        QStringList wide = sheet[1].section(u' ', 1).split(u' ');
        std::sort(wide.begin(), wide.end(), [](const QString& left, const QString& right) {
            return std::pair(left.indexOf(u'='), left) < std::pair(right.indexOf(u'='), right);
        });
        return QStringList {sheet[0].section(u' ', 2), wide.join(u' '), text(sheet[2]),
            text(captions.first()), text(captions.last())}
            .join(u' ');
    }

    void finished(const QString& reader, const QString& barcode, const QString& from, const QString& back)
    {
        m->insert(u"jhslsk"_s,
            {{u"readercode"_s, reader}, {u"barcode"_s, barcode}, {u"orderdate"_s, from},
                {u"yhdate"_s, u"2026-06-01"_s}, {u"backdate"_s, back}});
    }

    PeriodStatisticFrm* m_form = nullptr;
};

QTEST_MAIN(TestPeriods)
#include "test_periods.moc"
