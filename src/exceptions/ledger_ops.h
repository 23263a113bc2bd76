#pragma once

#include "frame/refusal.h"
#include "frame/search.h"
#include "platform/core/editor_mode.h"
#include "platform/report/report_viewer.h"

#include <QStringList>

namespace quilla {

/// The boxes of the ledger's editor.
namespace LedgerBox {
enum { Id, Title, Author, Barcode, Price, Memo, Operator, Date, Count };
}

/// The ledger entry of one withdrawn copy, as the editor has it.
struct Withdrawal {
    QString id {}; ///< empty for a new one
    QString bookname {};
    QString author {};
    QString barcode {};
    QString price {};
    QString cause {};
    QString memo {};
    QString operater {};
    QString outdate {};
};

/// The causes that are offered; the first one is preset.
QStringList withdrawalCauses();

/// What the ledger shows before it is narrowed.
ListSearch ledgerList();

/// The fields that the find box can look into, and the condition for part of a text in one of them. The text
/// may hold wild cards. The order of what is found.
QStringList ledgerFindFields();
QString ledgerFindCondition(int field, const QString& text);
inline constexpr QStringView LedgerFindOrder = u"outdate,cause,barcode";

/// Puts the copy of that entry back into stock, whatever its state, and takes the entry out of the ledger.
/// All or nothing. True when it was done; no box is shown either way.
bool restoreWithdrawnCopy(Session& session, qint64 id);

/// The ledger's report under the current year; the list's order does not apply. `anyShown`: whether the list
/// has a first line.
void printLedger(Session& session, ReportViewer& reports, const ListSearch& list, bool anyShown);
/// What an export of the ledger sends.
QString ledgerForExport(const ListSearch& list);

/// The entry of that number; nullopt when there is none. For 0 a new one, of today and the signed-in
/// operator.
std::optional<Withdrawal> readWithdrawal(Session& session, qint64 id);

/// What the catalogue knows of a copy.
struct CatalogueData {
    QString bookname;
    QString author;
    QString price;
};

/// What came of a look at the copy that is to be withdrawn.
struct CopyCheck {
    bool refused = false; ///< it is withdrawn already, which has been reported, or there is no connection
    /// nullopt for a barcode unknown to the catalogue, which may be entered too.
    std::optional<CatalogueData> data {};
};
CopyCheck CheckCopyForWithdrawal(Session& session, const QString& barcode);

/// Why a date can't stand in the ledger; nullopt also for an empty one, which fails in its statement.
std::optional<Refusal> withdrawalDateRefusal(const QString& date);

/// Stores a new entry, and takes its copy out of circulation where there is one; or changes an entry, whose
/// date, operator and copy stay as they are. All or nothing. True when it failed, which is left to the caller
/// to report.
bool SaveWithdrawal(Session& session, const EditorMode& mode, const Withdrawal& entry);

} // namespace quilla
