#pragma once

#include "exceptions/fine_view.h"
#include "frame/refusal.h"
#include "frame/session.h"

namespace quilla {

/// What the boxes lack for a settlement; its box is one of `FineBox`. Without a text when no connection could
/// be had, of which the operator knows.
std::optional<Refusal> ValidateFine(Session& session, const FineView& view);

/// Fines, end of the loan, state of the copy and its ledger row in one transaction. False when nothing of it
/// was stored, which is told.
bool SaveFine(Session& session, const FineView& view);

} // namespace quilla
