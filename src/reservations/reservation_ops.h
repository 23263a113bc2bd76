#pragma once

#include "frame/session.h"

#include <QStringList>

#include <optional>

namespace quilla {

/// The titles whose name holds `text`, or whose call number, with its distinguishing mark, begins with it:
/// id, call number, name, ISBN. nullopt after a failure, which is reported.
std::optional<Recordset> SearchTitles(Session& session, const QString& text);

/// What the operator chose and what the screen shows of it.
struct ReservationRequest {
    QString readercode; ///< as typed
    QString bookname; ///< of the title that was chosen
    QString barcode; ///< of the copy that was chosen; it only proves that one was looked at
    QString currentName; ///< of the current line among the titles
    QString currentBarcode; ///< of the current line among the copies
    QString zskid; ///< of the current line among the titles
    QStringList copyStates; ///< of all copies, as they were loaded
};

enum class ReservationOutcome {
    Placed,
    Refused, ///< or failed, or declined: the reader's code is to be typed again
    Untouched, ///< the focus stays where it is
};

/// Asks, then reserves the title for the reader. Whatever speaks against it is reported.
ReservationOutcome PlaceReservation(Session& session, const ReservationRequest& request);

/// Asks, then deletes the reservations whose last day is over. The readers' counters stay as they are: an
/// operator who wants a reader at the limit to go on sets that reader's parameters anew.
void ClearExpiredReservations(Session& session);

} // namespace quilla
