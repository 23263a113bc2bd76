#pragma once

#include "platform/core/digit_filter.h"
#include "platform/core/editor_mode.h"

class QAbstractButton;
class QComboBox;
class QLineEdit;

namespace quilla {

/// Keeps the mode letter and sets the two save buttons of an editor by it. A button is only touched when
/// its state differs from the one wanted.
EditorMode SetDataMode(const QString& mode, QAbstractButton& cmdAdd, QAbstractButton& CmdSave);

/// The box takes only the characters of the filter; after a refused one it is emptied and has the focus.
void filterDigits(QLineEdit& box, const DigitFilter& filter, Prompt& prompt);
void filterDigits(QComboBox& list, const DigitFilter& filter, Prompt& prompt);

} // namespace quilla
