#pragma once

#include <QString>

namespace quilla {

/// Whether a text has control characters, which no statement takes, line breaks and tabs apart; or half a
/// character.
bool hasUnseenCharacters(const QString& text);

/// "1.10101E+17": a spreadsheet took a long code for a number, and most of its digits are gone.
bool isRoundedCode(const QString& text);

/// "Ａ００１": no scanner sends it, and where widths compare alike it is "A001" once more.
bool hasWideForms(const QString& text);

} // namespace quilla
