#include "statistics/searched_list.h"

#include "output/export_ops.h"
#include "platform/ui/form/working_progress.h"
#include "statistics/query_form.h"

namespace quilla {

SearchedList::SearchedList(const Workplace& place, const QString& name, const QString& title)
    : ListScreen(name, title)
    , m_session(place.session)
    , m_reports(place.reports)
    , m_spreadsheets(place.spreadsheets)
{
}

void SearchedList::find(const QueryTriple& triple)
{
    if (askQuery(m_session.prompt, triple, *this, this)) Grid1.setFocus();
}

void SearchedList::offerSorting(const std::vector<SortChoice>& choices)
{
    QStringList entries;
    for (const SortChoice& choice : choices) {
        if (!entries.isEmpty()) entries.append(u"-"_s);
        entries.append(choice.caption);
    }
    const int number = Menu.Popup(entries);
    if (number == 0) return Grid1.sortRows(0, Grid1.ColSel());
    const int column = number / 2; // the separators have numbers too
    m_search.order = choices[std::size_t(column)].field;
    Grid1.sortRows(column, column);
}

void SearchedList::toExcel(const ExportLayout& layout, const QString& select, QStringView nothing)
{
    WorkingProgress progress(this);
    exportList({m_session, progress, m_spreadsheets}, layout, select, nothing);
}

} // namespace quilla
