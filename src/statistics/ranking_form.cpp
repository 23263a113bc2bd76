#include "statistics/ranking_form.h"

#include "platform/ui/form/form.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"
#include "statistics/no_rows.h"

#include <QLineEdit>

namespace quilla {

namespace {

enum Button { Find, Print, Quit };

constexpr int BlankRows = 2;
constexpr int WidthParts = 15;

} // namespace

RankingForm::RankingForm(const Workplace& place, const Ranking& ranking)
    : ListScreen(ranking.name, ranking.title)
    , m_place(place)
    , m_session(place.session)
    , m_work(place.session, ranking)
    , m_list(*this)
    , m_ranking(ranking)
{
    QUILLA_NAMES(Command1);
    Grid1.setUp(BlankRows, ranking.format);
}

void RankingForm::arrange(const Piece& boxes, const Piece& foot)
{
    ListScreen::arrange(column(
        boxes, Piece(Grid1).grow(), row(foot, stretch(), Command1[Find], Command1[Print], Command1[Quit])));
    onClick(Command1[Find], [this] { showRanking(); });
    onClick(Command1[Print], [this] { print(); });
    onClick(Command1[Quit], [this] { closeScreen(*this); });
}

bool RankingForm::checkDates()
{
    for (int index = 0; index < 2; ++index) {
        std::optional<Refusal> refusal = dateRefusal(m_ranking, dateBox(index).text());
        if (!refusal) continue;
        if (!refusal->text.isEmpty()) refusal->box = index;
        tell(m_session.prompt, *refusal, [this](int box) { dateBox(box).setFocus(); });
        return false;
    }
    return true;
}

/// nullopt when there is nothing to show: a date is refused, a statement failed, or nobody borrowed, of which
/// the title takes a note.
std::optional<Recordset> RankingForm::rank()
{
    if (!checkDates()) return {};
    const WaitCursor hourglass;
    setWindowTitle(m_ranking.title);
    std::optional<Recordset> rows = m_work.run(query());
    if (!rows || !rows->eof()) return rows;
    setWindowTitle(m_ranking.title + NoRowsNote);
    return {};
}

void RankingForm::showRanking()
{
    std::optional<Recordset> rows = rank();
    if (!rows) return;
    {
        const GridModel::Filling filling(Grid1.cells());
        Grid1.bind(*rows);
        Grid1.setFormatString(m_ranking.format);
    }
    for (std::size_t part = 0; part < m_ranking.widths.size(); ++part)
        Grid1.setColWidth(int(part) + 1, twipsOf(Grid1.width(), Grid1) * m_ranking.widths[part] / WidthParts);
    Grid1.setRow(1);
    Grid1.scrollToTop();
}

void RankingForm::print()
{
    std::optional<Recordset> rows = rank();
    if (!rows) return;
    m_place.reports.showReport(m_ranking.report, *rows, reportTexts());
    closeScreen(*this);
}

} // namespace quilla
