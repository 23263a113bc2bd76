#pragma once

#include "frame/session.h"

namespace quilla {

/// What the password form does next.
enum class PasswordOutcome {
    Stay,
    StayAtOld, ///< with the focus in the box of the old password
    StayAtNew, ///< with the focus in the box of the new one
    Close,
};

/// Changes the signed-in operator's own password. Opens its connection directly, so a failure never
/// leads to the connection settings. The success message does not depend on the rows changed.
PasswordOutcome changePassword(
    Session& session, const QString& oldPassword, const QString& newPassword, const QString& repeated);

} // namespace quilla
