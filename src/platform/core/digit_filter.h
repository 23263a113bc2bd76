#pragma once

#include "platform/core/prompt.h"

namespace quilla {

/// Which characters a number box takes while it is typed in, and what it says to others.
///
/// The bounds 47 to 58 are wider than the digits by one on either side, so "/" and ":" pass here and
/// only fail later, as a number.
struct DigitFilter {
    bool takesEscape; ///< whether Esc passes
    QString message; ///< shown for any other character
    QString title;

    bool accepts(QChar character) const;
};

/// True when the character may enter the box. Otherwise the message has been shown; the character is to
/// be dropped, the box to be emptied and to take the focus.
bool passesFilter(const DigitFilter& filter, QChar character, Prompt& prompt);

} // namespace quilla
