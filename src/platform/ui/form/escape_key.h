#pragma once

class QDialog;

namespace quilla {

/// Esc no longer closes the dialog: a form must not lose what was typed into it. Controls that know the key,
/// such as an open list, still get it first. `build` does this for its form.
void keepOpenAtEscape(QDialog& dialog);

} // namespace quilla
