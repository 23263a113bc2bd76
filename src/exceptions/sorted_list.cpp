#include "exceptions/sorted_list.h"

#include "platform/core/caption.h"
#include "platform/ui/form/wait_cursor.h"
#include "platform/ui/look/theme.h"
#include "readers/reader_card_form.h"

#include <QShortcut>

namespace quilla {

SortedList::SortedList(const Workplace& place, const SortedListPlan& plan)
    : SearchedList(place, plan.name, plan.title)
    , lCounts(recordCountText(0))
    , m_plan(plan)
{
    QUILLA_NAMES(lCounts, labRemark, Command1);
    setCaptions(Command1, plan.captions);
    shareWidth(plan.widths);
    onClick(Command1[Sort], [this] { offerSorting(); });
    onClick(Command1[Close], [this] { closeScreen(*this); });
    onClick(Command1[Find], [this] { find(m_plan.triple); });
    auto* card = new QShortcut(Qt::CTRL | Qt::Key_R, this);
    card->setContext(Qt::WidgetWithChildrenShortcut);
    connect(card, &QShortcut::activated, this, [this] { openReaderCard(); });
    Grid1.setToolTip(u"Ctrl+R：查看当前读者的借书证"_s);
    Grid1.setUp(2, plan.format);
    setTone(labRemark, Tone::Warning);
    arrange(row(lCounts, room(16), labRemark),
        {Command1[Find], Command1[Sort], Command1[Own], Command1[Print], Command1[Close]});
    loadData({}, {});
}

/// The search is remembered before the connection is opened; without one the lines stay as they are.
void SortedList::loadData(const QString& condition, const QString& order)
{
    const WaitCursor hourglass;
    m_search = m_plan.everything;
    m_search.condition = condition;
    m_search.order = order;
    auto found = rowsFound(m_session, m_search);
    if (!found) return;
    fillGrid(Grid1, *found, {.format = m_plan.format, .money = m_plan.money});
    showCount(anyShown() ? lines() : 0);
}

void SortedList::showCount(int lines)
{
    lCounts.setText(recordCountText(lines));
    gridFix();
}

/// The grid sorts what it shows; the field becomes the order of later printouts. A dismissed menu leaves that
/// order, yet the lines are sorted by all columns from the left, since the selection spans them all.
void SortedList::offerSorting()
{
    QStringList entries;
    for (const SortChoice& choice : m_plan.sorting) {
        if (!entries.isEmpty()) entries.append(u"-"_s);
        entries.append(choice.caption);
    }
    const int number = Menu.Popup(entries);
    if (number == 0) return Grid1.sortRows(0, Grid1.ColSel());
    const int column = number / 2; // the separators have numbers too
    m_search.order = m_plan.sorting[std::size_t(column)].field;
    Grid1.sortRows(column, column);
}

void SortedList::openReaderCard()
{
    const QString barcode = Grid1.current(Barcode);
    if (Grid1.current(ReaderCode).isEmpty()) return;
    DzaddFrm card(m_session, {}, this);
    card.SetEditMode(u"E"_s);
    card.LoadReader(Grid1.current(ReaderCode));
    if (card.exec() != QDialog::Accepted) return;
    loadData(m_search.condition, m_search.order);
    Grid1.selectKey(barcode);
}

} // namespace quilla
