#pragma once

#include "frame/workplace.h"

namespace quilla {

/// Every form of this program. This is the one place where a new screen is named: the menu opens it, the
/// gallery draws it, and the tests of names and captions go over it from here.
const ScreenRegister& allScreens();

/// What the menu does without a screen.
const ActionRegister& allActions();

} // namespace quilla
