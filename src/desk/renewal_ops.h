#pragma once

#include "desk/desk_view.h"
#include "frame/session.h"

namespace quilla {

/// The answer of `CheckRenewal` that refuses.
inline constexpr qint16 RenewalRefused = -1;

/// Whether the loan of this copy may be renewed once more: the count that the renewed loan will carry, or
/// `RenewalRefused`, which has been reported. 0, which reads as allowed, when there is no connection. Any
/// failure ends the program, also a count that is null.
qint16 CheckRenewal(Session& session, DeskView& desk, const QString& barcode);

} // namespace quilla
