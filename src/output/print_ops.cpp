#include "output/print_ops.h"

#include "frame/work.h"

namespace quilla {

namespace {

void tellNothing(Session& session, const ListPrint& print)
{
    if (!print.nothing.isEmpty()) session.prompt.inform(print.nothing, OperationTitle);
}

/// nullopt when no connection can be had.
std::optional<Recordset> rowsOf(Session& session, const ListPrint& print)
{
    if (print.errors == PrintErrors::Strict) {
        StrictWork work(session);
        return work ? std::optional(work.open(print.select)) : std::nullopt;
    }
    ResumingWork work(session);
    return work ? std::optional(work.select(print.select)) : std::nullopt;
}

/// A select that failed brought no fields either.
bool hasReport(const Recordset& rows, NoRows noRows)
{
    return noRows == NoRows::Printed ? rows.fieldCount() > 0 : !rows.eof();
}

} // namespace

bool printList(Session& session, ReportViewer& reports, const ListPrint& print)
{
    if (print.select.isEmpty()) {
        tellNothing(session, print);
        return false;
    }
    if (!print.hint.isEmpty()) session.prompt.inform(print.hint, OperationTitle);
    auto rows = rowsOf(session, print);
    if (!rows) return false;
    if (hasReport(*rows, print.noRows)) {
        reports.showReport(print.design, *rows, print.texts ? print.texts() : ReportTexts());
        return true;
    }
    if (print.noRows == NoRows::Told) tellNothing(session, print);
    return false;
}

} // namespace quilla
