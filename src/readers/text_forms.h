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

/// The ISO form of a day that begins with its whole year: "2026-1-5", "2026/01/05", "2026年1月5日",
/// "20260105". Empty for any other text.
QString storedDay(const QString& text);

} // namespace quilla
