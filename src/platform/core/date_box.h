#pragma once

#include "platform/core/prompt.h"

#include <QDate>

#include <optional>

namespace quilla {

/// Whether a desktop platform takes the text for a date, and which: "2003-1-5", "2003/01/05",
/// "2003.1.5", "2003年1月5日", "2003-1" (its first day), "1-5-2003", "5/1/03", "1-5" (of this year), each
/// with or without a time after it. A time alone is a date as well, the zero date. Eight bare digits
/// are a number and no date. Two-digit years up to 29 are of this century. Blanks around are ignored.
std::optional<QDate> platformDate(QStringView text, const QDate& today = QDate::currentDate());

/// A date text as every database reads it: "2003年1月5日" or "2003-1" as its day, all else as it was typed.
QString databaseDate(const QString& text);

/// Whether a date text begins with its full, four-digit year.
bool startsWithFullYear(QStringView text);

/// What `CheckDateBox` found.
struct DateVerdict {
    QString result; ///< "pass" or empty
    bool refused = false; ///< a message was shown: the box is to be enabled and to take the focus
    bool passed() const { return !result.isEmpty(); }
};

/// The test of one date box: an empty one fails without a word, a text that is no date or has no
/// four-digit year at its beginning fails with a message. The order of two dates is not tested.
DateVerdict CheckDateBox(const QString& text, Prompt& prompt);

} // namespace quilla
