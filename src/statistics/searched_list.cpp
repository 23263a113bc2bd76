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

void SearchedList::toExcel(const ExportLayout& layout, const QString& select, QStringView nothing)
{
    WorkingProgress progress(this);
    exportList({m_session, progress, m_spreadsheets}, layout, select, nothing);
}

} // namespace quilla
