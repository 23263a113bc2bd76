#pragma once

#include "desk/fine_dialog.h"
#include "frame/screens.h"

namespace quilla {

/// The screens of this program. What the menu names beyond them is shown disabled: this is the one place
/// that says which screens there are.
/// `fines` must outlive the screens.
ScreenCatalog allScreens(FineDialog& fines);

} // namespace quilla
