#pragma once

#include "frame/session.h"

#include <array>

namespace quilla {

class ReportViewer;

/// Whose history is asked for; the procedure knows the two by these numbers.
enum class HistoryOf { Copy = 0, Reader = 17 };

struct HistoryQuery {
    HistoryOf kind = HistoryOf::Copy;
    QString barcode;
    QString readercode;

    const QString& code() const { return kind == HistoryOf::Copy ? barcode : readercode; }
};

/// The reader of a loan.
struct HistoryReader {
    QString name; ///< empty when the card is gone
    QString readercode;
};

/// The cataloguing data of a title, in the order of the screen.
using Catalogue = std::array<QString, 14>;

/// The loans of a copy or a reader, without rows when there are none; nullopt after a failure, which is
/// reported.
std::optional<Recordset> loanHistory(Session& session, const HistoryQuery& query);
/// The reader of a loan. A failure is reported.
HistoryReader historyReader(Session& session, const QString& readercode);
/// The cataloguing data of a copy; empty texts for one that is unknown, lost or withdrawn. A failure is
/// reported.
Catalogue catalogueOf(Session& session, const QString& barcode);

/// Opens the report on the rows of the last search.
void printHistory(ReportViewer& reports, Recordset& rows, const HistoryQuery& query);

} // namespace quilla
