#pragma once

#include "frame/search.h"
#include "frame/workplace.h"
#include "output/print_ops.h"
#include "platform/ui/form/popup_menu.h"
#include "platform/ui/grid/list_screen.h"
#include "statistics/query_ops.h"

namespace quilla {

struct ExportLayout;

/// A list that the query dialog narrows, with the steps that such lists have in common. The derived screen
/// says how it is loaded, what its buttons are and when it has nothing to print.
class SearchedList : public ListScreen, public QueryReceiver {
    Q_OBJECT

public:
    CreateMenu Menu;

protected:
    SearchedList(const Workplace& place, const QString& name, const QString& title);

    /// Opens the query dialog, and gives the grid the focus after a search.
    void find(const QueryTriple& triple);
    bool print(const ListPrint& print) { return printList(m_session, m_reports, print); }
    /// Puts the rows of `select` on a spreadsheet; `nothing` is the message when it is empty. The screen may
    /// be gone when this returns.
    void toExcel(const ExportLayout& layout, const QString& select, QStringView nothing);
    /// Whether the first cell of the list is filled, which is what a list with records looks like.
    bool anyShown() const { return !Grid1.TextMatrix(1, 0).isEmpty(); }

    Session& m_session;
    ReportViewer& m_reports;
    SpreadsheetProgram& m_spreadsheets;
    ListSearch m_search; ///< what the list shows, and what is printed
};

} // namespace quilla
