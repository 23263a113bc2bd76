#pragma once

#include <QString>

namespace quilla {

using namespace Qt::StringLiterals;

/// Doubles every single quote, so that the text can stand between single quotes in a statement.
QString doubled(QStringView text);

/// `text` without the blanks around it. A blank is the character 32 alone: tabs, wide blanks and no-break
/// blanks belong to what somebody wrote.
QString trimBlanks(const QString& text);
QStringView trimBlanks(QStringView text);

/// Whether a code, a name or a type counts as empty: it has no characters, or nothing but blanks.
bool isBlank(QStringView text);

/// Whether two codes or states are the same to the database: without regard to case, to width and to blanks
/// at the end. "abc1" and "ＡBC１  " are one reader.
bool sameText(QStringView left, QStringView right);

/// Orders two texts as the database does: by pinyin, and as above. Accents and signs count. Below, equal or
/// above 0.
int compareText(QStringView left, QStringView right);

} // namespace quilla
