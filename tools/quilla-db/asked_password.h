#pragma once

#include <QString>

namespace quilla {

/// A new password: asked twice on the terminal without showing it, or one line of the standard input where
/// that is no terminal. Throws `Error` when the two differ, and for an empty one.
QString askedPassword();

} // namespace quilla
