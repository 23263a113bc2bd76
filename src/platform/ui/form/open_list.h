#pragma once

#include <QString>

class QComboBox;

namespace quilla {

/// A list that also takes any text, one plain line. Nothing completes what is typed, since a new text may
/// begin like a known one, and only what the operator picks counts as a choice: a text typed to the end,
/// though it be one of the list, does not.
void takeAnyText(QComboBox& list);

/// The text in the list: a known one as it stands, any other without blanks around it.
QString chosenOrTyped(const QComboBox& list);

} // namespace quilla
