#pragma once

#include "exceptions/fine_view.h"
#include "frame/session.h"

namespace quilla {

/// Ticks the overdue fine of a loan that was due before today, or before its copy was registered as lost;
/// such a copy has its loss ticked too, with the amount of the register. Goes on after a failing statement,
/// which counts as one without rows; false when the last step failed that way.
bool ComputeOverdueFine(Session& session, FineView& view, const QString& readercode, const QString& barcode);
/// The amounts of damage and loss; 0.00 for a barcode without a loan.
void ComputeDefileFine(Session& session, FineView& view, const QString& barcode);
void ComputeLostFine(Session& session, FineView& view, const QString& barcode);

} // namespace quilla
