#pragma once

#include "frame/session.h"

#include <array>

namespace quilla {

/// The three panels of the status bar. The date is asked of the server once, when the window opens.
std::array<QString, 3> statusTexts(Session& session);

/// Whether a loan is overdue by its date alone: one due today is not. No when there is no connection.
/// Throws `Error` when the database fails.
bool overdueLoansExist(Session& session);

/// What the main window does at its opening: fills the status bar through `showStatus`, asks about
/// overdue loans, reports what went wrong on the way. True when the operator wants to see them.
bool openingSteps(Session& session, const std::function<void(const std::array<QString, 3>&)>& showStatus);

/// The exit question.
bool confirmExit(Session& session);

} // namespace quilla
