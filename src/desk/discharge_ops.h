#pragma once

#include "desk/desk_view.h"
#include "desk/fine_dialog.h"
#include "frame/session.h"

namespace quilla {

/// The outcomes of a discharge.
enum DischargeResult : qint32 {
    Discharged = 0, ///< the loan was closed; also when there is no connection, which has been reported
    NoLoan = 1, ///< no loan for this barcode, which has been reported
    FineDeclined = 10, ///< overdue, and the fine dialog ended without closing the loan
    NotDischarged = -2, ///< rolled back
};

/// Takes a copy back, whoever has it. A loan in time is closed in one transaction, and the copy then
/// offered to the earliest reservation of its title; an overdue one is the fine dialog's to close.
/// A failing statement does not stop the operation; what fails between begin and commit rolls it back.
DischargeResult DischargeBook(Session& session, DeskView& desk, FineDialog& fines, const QString& barcode);

} // namespace quilla
