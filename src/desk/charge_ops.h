#pragma once

#include "desk/desk_view.h"
#include "frame/session.h"

namespace quilla {

/// The outcomes of a charge. Above 0 it was refused, and the operator has seen why; below 0 it failed, and
/// the caller reports that.
enum ChargeResult : qint32 {
    Charged = 0, ///< the loan was written; also when there is no connection, which has been reported
    Incomplete = 1, ///< reader code or barcode empty
    NoSuchReader = 2,
    QuotaUsedUp = 3,
    NoSuchCopy = 4,
    NotAvailable = 5, ///< card not valid, or copy not available
    ReferenceCopy = 6,
    HoldsOverdue = 100,
    NotCharged = -1, ///< declined at the reservation question, or rolled back
};

/// Charges the copy to the reader: every check in order, then loan, copy and reader in one transaction.
/// A failing statement does not stop the operation; what fails between begin and commit rolls it back.
ChargeResult ChargeBook(Session& session, DeskView& desk, const QString& barcode, const QString& readercode);

/// The new charge of a renewal, after the copy was discharged: a charge as any other, but for 30 days
/// whatever the reader's period says, and with the count of renewals on the loan unless the copy was held.
ChargeResult RechargeBook(
    Session& session, DeskView& desk, qint16 count, const QString& barcode, const QString& readercode);

} // namespace quilla
