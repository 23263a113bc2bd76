#include "statistics/circulation_form.h"

#include "frame/sublib.h"
#include "output/export_ops.h"
#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"

namespace quilla {

namespace {

constexpr int OpenLoans = 1;
constexpr int BlankRows = 12;

} // namespace

LttjFrm::LttjFrm(const Workplace& place)
    : SearchedList(place, u"LttjFrm"_s, u"流通统计"_s)
    , Dates(u"统计日期范围"_s, DateRange::Filling::Kept,
          [&session = place.session] { return GetServerDate(session); })
    , cmdQuery(u"&F 查找"_s)
    , CmdPrint(u"&D 打印"_s)
    , cmdToExcel(u"&E 输出到excel"_s)
    , cmdQuit(u"&Q 关闭"_s)
{
    QUILLA_NAMES(Option1, Dates, cmdQuery, CmdPrint, cmdToExcel, cmdQuit, iRec);
    for (int option = 0; option < 4; ++option) {
        Option1[option].setText(circulationModes()[std::size_t(option)].caption);
        if (option != OpenLoans) Option1[option].setFocusPolicy(Qt::ClickFocus); // Tab goes to the chosen one
    }
    Option1[OpenLoans].setChecked(true);
    layOut();
    wire();
    emptyGrid();
}

void LttjFrm::layOut()
{
    arrange(column(row(Option1[0], Option1[1], Option1[2], Option1[3], stretch()), Dates, Piece(Grid1).grow(),
        row(u"记录数："_s, iRec, stretch(), cmdQuery, CmdPrint, cmdToExcel, cmdQuit)));
}

void LttjFrm::wire()
{
    onClick(Option1, [this](int) { emptyGrid(); });
    onClick(cmdQuery, [this] { query(); });
    onClick(CmdPrint, [this] { printRows(); });
    onClick(cmdToExcel, [this] { toExcel(listLayout(mode().sheet), m_lastSelect, NothingToPrint); });
    onClick(cmdQuit, [this] { closeScreen(*this); });
}

const CirculationMode& LttjFrm::mode() const
{
    std::size_t option = 0;
    while (!Option1[option].isChecked())
        ++option;
    return circulationModes()[option];
}

void LttjFrm::emptyGrid()
{
    iRec.setText(u"0"_s);
    Grid1.setCols(int(mode().cells.size()));
    Grid1.setUp(BlankRows, mode().format);
    Grid1.setColWidths({});
}

void LttjFrm::query()
{
    if (!Dates.isOn() || Dates.passes(m_session.prompt)) find(mode().triple);
}

/// A select that fails leaves everything as it was.
void LttjFrm::loadData(const QString& condition, const QString& order)
{
    const WaitCursor hourglass;
    const auto dates = Dates.isOn() ? std::optional(DateLimits {Dates.from(), Dates.to()}) : std::nullopt;
    const QString select = circulationSearch(mode(), dates, condition, order).statement();
    const auto count = listCirculation(m_session, mode(), select, Grid1.cells());
    if (!count) return;
    m_lastSelect = *count > 0 ? select : QString();
    if (*count == 0) return emptyGrid();
    iRec.setText(QString::number(*count));
    const int days = int(mode().cells.indexOf(OverdueDays));
    if (days >= 0) Grid1.setColWidth(days, Grid1.contentTwips(days)); // with all their digits
    Grid1.setRow(1);
    Grid1.scrollToTop();
}

void LttjFrm::printRows()
{
    const bool shown = print({.design = mode().report,
        .select = m_lastSelect,
        .nothing = {},
        .hint = mode().paperHint,
        .noRows = NoRows::Printed});
    if (shown) closeScreen(*this);
}

} // namespace quilla
