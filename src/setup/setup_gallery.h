#pragma once

#include "setup/setup_form.h"

namespace quilla {

/// Draws every page of the set-up into PNG files of a folder, at 100 and 200 %. Nothing is set up. False when
/// a file can't be written.
bool drawSetup(SetupFrm& form, const QString& folder);

} // namespace quilla
