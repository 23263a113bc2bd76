#pragma once

#include "exceptions/fine_view.h"
#include "frame/refusal.h"
#include "frame/session.h"

namespace quilla {

/// What the boxes lack for a settlement; its box is one of `FineBox`. Without a text when there is no
/// connection, which has been reported.
std::optional<Refusal> ValidateFine(Session& session, const FineView& view);

/// Stores the fines, the end of the loan, the state of the copy and its ledger row in one transaction. False
/// when nothing of it was stored, which is reported.
bool SaveFine(Session& session, const FineView& view);

} // namespace quilla
