#include "statistics/period_paper.h"

#include "platform/ui/form/form.h"
#include "platform/ui/look/theme.h"

namespace quilla {

namespace {

constexpr int Shown = 2; // rows of a grid that is not filled yet

} // namespace

PeriodPaper::PeriodPaper(const PeriodStatistic& statistic, const Period& period)
    : m_statistic(statistic)
{
    setObjectName(statistic.paperName);
    QUILLA_NAMES(Title, labDateJian, labReaderCount, labBiLv, labRiQi, Grid1);
    Title.setText(statistic.sheet(period).title);
    setWindowTitle(Title.text());
    labDateJian[0].setText(period.firstDay());
    labDateJian[1].setText(period.lastDay());
    Grid1.setUp(Shown, statistic.paperFormat, statistic.widths);
    Grid1.setAccessibleName(Title.text());
    layOut();
}

/// The averages stand in two lines of their own, the rates in a third.
void PeriodPaper::layOut()
{
    QFont large = Title.font();
    large.setPointSizeF(large.pointSizeF() * 1.5);
    large.setBold(true);
    Title.setFont(large);
    Title.setAlignment(Qt::AlignCenter);
    const Piece days = row(u"本月日期段："_s, labDateJian[0], u"～"_s, labDateJian[1], room(24));
    const Piece printed = row(u"打印日期："_s, labRiQi, stretch());
    if (!m_statistic.countsReaders) {
        build(*this,
            column(Title, row(days, u"此期间借阅总次数："_s, labReaderCount, stretch()), Piece(Grid1).grow(),
                printed));
        resize(pixelsOf(13500, *this), pixelsOf(8400, *this));
        return;
    }
    build(*this,
        column(Title, row(days, u"此期间借还总人数："_s, labReaderCount, stretch()),
            row(u"藏书利用率："_s, labBiLv[0], room(16), u"读者到馆率："_s, labBiLv[1], room(16),
                u"读者阅读率："_s, labBiLv[2], stretch()),
            row(u"人均借出："_s, labBiLv[3], stretch()), row(u"人均还回："_s, labBiLv[4], stretch()),
            Piece(Grid1).grow(), printed));
    resize(pixelsOf(9000, *this), pixelsOf(12000, *this));
}

void PeriodPaper::loadGridData()
{
    Grid1.setColWidths(m_statistic.widths);
    Grid1.cells().centreCaption(1);
}

void PeriodPaper::showFigures(const WorkloadFigures& figures)
{
    labReaderCount.setText(figures.allReaders);
    const QString texts[] {figures.shelfUse, figures.visitors, figures.shelfUse, figures.lentPerReader,
        figures.returnedPerReader};
    for (int index = 0; index < 5; ++index)
        labBiLv[index].setText(texts[index]);
}

} // namespace quilla
