#include "statistics/period_form.h"

#include "frame/sublib.h"
#include "output/export_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/working_progress.h"
#include "platform/ui/look/theme.h"
#include "statistics/period_paper.h"

#include <QElapsedTimer>

namespace quilla {

namespace {

enum Button { AsTable, AsPie, OnPaper };

constexpr int BlankRows = 2;
const QString Running = u"正在统计,请稍候..............."_s;

constexpr qint64 PaintEvery = 100; // milliseconds
constexpr int ScreenWidth = 13500; // twips
constexpr int ScreenHeight = 7500;

} // namespace

PeriodStatisticFrm::PeriodStatisticFrm(const Workplace& place, const PeriodStatistic& statistic)
    : ListScreen(statistic.name, statistic.title)
    , Box(statistic.kind, GetServerDate(place.session).date)
    , cmdNewSelect(u"开始统计( &N )"_s)
    , cmdChart(u"统计图( &G )"_s)
    , cmdToExcel(u"输出到excel( &E )"_s)
    , cmdQuit(u"退出( &Q )"_s)
    , Frame1(statistic.frameTitle)
    , m_place(place)
    , m_session(place.session)
    , m_statistic(statistic)
{
    QUILLA_NAMES(Box, cmdNewSelect, cmdClick, cmdChart, cmdToExcel, cmdQuit, Frame1, labReaderCount,
        labBookJieChu, labBookHuanHui, LabBiLv);
    setCaptions(cmdClick, {u"表格显示( &L )"_s, u"图饼显示( &T )"_s, statistic.printCaption});
    layOut();
    wire();
    emptyGrid();
    for (QPushButton* button :
        {&cmdClick[AsTable], &cmdClick[AsPie], &cmdClick[OnPaper], &cmdChart, &cmdToExcel})
        button->setEnabled(false);
}

void PeriodStatisticFrm::layOut()
{
    setUsualSize(ScreenWidth, ScreenHeight);
    Piece result = Piece(Grid1).grow();
    if (m_statistic.countsReaders) result = column(result, figures());
    arrange(column(row(Box, cmdNewSelect, stretch()), group(Frame1, result).grow(),
        row(stretch(), cmdClick[AsTable], cmdClick[AsPie], cmdClick[OnPaper], cmdChart, cmdToExcel,
            cmdQuit)));
    Box.setFocus();
}

/// Head counts and rates, unseen before the first run.
QLayout* PeriodStatisticFrm::figures()
{
    for (QLabel* figure :
        {&labReaderCount, &labBookJieChu, &labBookHuanHui, &LabBiLv[0], &LabBiLv[1], &LabBiLv[2]})
        figure->hide();
    return column(row(u"借还总人数："_s, labReaderCount, room(24), u"人平均："_s, u"借出："_s, labBookJieChu,
                      room(8), u"还回："_s, labBookHuanHui, stretch()),
        row(u"藏书利用率："_s, LabBiLv[0], room(24), u"读者到馆率："_s, LabBiLv[1], room(24),
            u"读者阅读率："_s, LabBiLv[2], stretch()))
        .layout;
}

void PeriodStatisticFrm::wire()
{
    onClick(cmdNewSelect, [this] { run(); });
    onClick(cmdClick[AsPie], [this] { m_session.prompt.inform(u"暂不提供该功能！"_s, OperationTitle); });
    onClick(cmdClick[OnPaper], [this] { print(); });
    onClick(cmdChart, [this] { showChart(); });
    onClick(cmdToExcel, [this] { toExcel(); });
    onClick(cmdQuit, [this] { closeScreen(*this); });
    onFocus(Grid1, [this] { colourSelection(true); });
    onLeave(Grid1, [this] { colourSelection(false); });
    colourSelection(false);
}

/// The window is painted anew between the statements of a long run, since no event is served until the run
/// has ended.
void PeriodStatisticFrm::run()
{
    const std::optional<Period> period = Box.period();
    if (!period) return Box.textDate.setFocus();
    const WaitCursor hourglass;
    Frame1.setTitle(Running);
    emptyGrid();
    m_last = *period;
    QElapsedTimer sincePaint;
    const auto repaint = [&] {
        if (sincePaint.isValid() && sincePaint.elapsed() < PaintEvery) return;
        window()->repaint();
        sincePaint.start();
    };
    const auto result = runStatistic(m_session, m_statistic, m_last, Grid1.cells(), repaint);
    if (result) showRun(*result);
    Frame1.setTitle(m_statistic.frameTitle);
}

/// After a run without lines the buttons stay as they were.
void PeriodStatisticFrm::showRun(const PeriodRun& run)
{
    showFigures(run.figures);
    m_lines = run.lines;
    setWindowTitle(m_statistic.title + (run.lines == 0 ? m_statistic.emptyNote : QString()));
    if (run.lines == 0) return emptyGrid();
    for (QPushButton* button :
        {&cmdClick[AsTable], &cmdClick[AsPie], &cmdClick[OnPaper], &cmdChart, &cmdToExcel})
        button->setEnabled(true);
    if (!m_statistic.widths.empty()) Grid1.setColWidths(m_statistic.widths);
    Grid1.cells().centreCaption(1);
    Grid1.setRow(1);
    Grid1.scrollToTop();
}

void PeriodStatisticFrm::showFigures(const WorkloadFigures& figures)
{
    m_figures = figures;
    const std::pair<QLabel*, QString> texts[] {{&labReaderCount, figures.allReaders},
        {&labBookJieChu, figures.lentPerReader}, {&labBookHuanHui, figures.returnedPerReader},
        {&LabBiLv[0], figures.shelfUse}, {&LabBiLv[1], figures.visitors}, {&LabBiLv[2], figures.shelfUse}};
    for (const auto& [label, text] : texts) {
        label->setText(text);
        label->setVisible(m_statistic.countsReaders);
    }
}

void PeriodStatisticFrm::emptyGrid()
{
    m_lines = 0;
    Grid1.setUp(BlankRows, m_statistic.emptyFormat, m_statistic.widths);
}

/// The selection shows only while the grid has the focus.
void PeriodStatisticFrm::colourSelection(bool focused)
{
    QPalette colours = Grid1.palette();
    colours.setColor(QPalette::Highlight, focused ? Theme::current().figures : Theme::current().window);
    colours.setColor(QPalette::HighlightedText, Theme::current().text);
    Grid1.setPalette(colours);
}

void PeriodStatisticFrm::print()
{
    hintAtPaper(m_session, m_statistic);
    m_statistic.paperName.isEmpty() ? showReaderTypes(m_session, m_place.reports, m_statistic, m_last)
                                    : printForm();
}

/// The lines are asked for again, the figures are those on the screen.
void PeriodStatisticFrm::printForm()
{
    PeriodPaper paper(m_statistic, m_last);
    if (!fillPaper(m_session, m_statistic, m_last, paper.Grid1.cells())) return;
    paper.loadGridData();
    m_statistic.countsReaders ? paper.showFigures(m_figures)
                              : paper.labReaderCount.setText(sumOf(Grid1.cells()));
    const Moment now = GetServerDate(m_session);
    paper.labRiQi.setText(isoDate(now) + now.time.toString(u" HH:mm:ss"));
    try {
        m_place.formPrinter.printForm(paper, m_statistic.paper);
    } catch (const Error& error) {
        tellFailure(m_session, error);
    }
}

void PeriodStatisticFrm::showChart()
{
    if (m_lines == 0) return m_session.prompt.inform(u"没有可以显示的数据！"_s, OperationTitle);
    m_place.reports.showChart(m_statistic.chart(m_statistic.sheet(m_last).title, Grid1.cells()));
}

void PeriodStatisticFrm::toExcel()
{
    WorkingProgress progress(this);
    exportGrid(
        {m_session, progress, m_place.spreadsheets}, m_statistic.sheet(m_last), Grid1.cells(), m_lines);
}

} // namespace quilla
