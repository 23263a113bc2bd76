#pragma once

#include "desk/desk_view.h"
#include "frame/session.h"

namespace quilla {

/// Fills the reader panel, and brings the card's state up to date with its term: "有效" becomes "超期"
/// once the last day has begun, and comes back when the term was extended. No other state is touched.
void ShowReader(Session& session, DeskView& desk, const QString& readercode);

/// Fills the grid of the reader's open loans.
void ShowLoans(Session& session, DeskView& desk, const QString& readercode);

/// Which of a reader's returns are shown.
enum class Returns { All, Today };

/// Fills the grid of what the reader returned, newest first. Today is the server's calendar day.
void ShowReturns(Session& session, DeskView& desk, const QString& readercode, Returns which);

/// The title of a copy, one line a field, for the tool tip of a grid. Empty for an unknown barcode.
QString bookDetails(Session& session, const QString& barcode);

} // namespace quilla
