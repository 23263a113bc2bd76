#pragma once

#include "frame/screens.h"

namespace quilla {

/// The screens of this program. What the menu names beyond them is shown disabled: this is the one place
/// that says which screens there are.
ScreenCatalog allScreens();

} // namespace quilla
