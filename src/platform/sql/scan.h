#pragma once

#include "platform/sql/translator.h"

namespace quilla::sql {

/// The lowest level of the dialect: where words, literals, names and comments end. The pass that finds a
/// statement's shape and the lexer both stand on it, so that they count the same literals.

bool startsWord(char16_t c);
bool continuesWord(char16_t c);
inline bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

/// Whether a number is written with a point or an exponent.
bool hasFraction(QStringView number);

/// The end of a number that begins at `from`, after its fraction and exponent. `whole`: of few enough digits
/// for 64 bits and without a fraction.
qsizetype endOfNumber(QStringView text, qsizetype from, bool& whole);

/// The end of what begins at `from` with a quote, "[" or a double quote, after its closing sign.
/// Refuses when that is missing. `doubled` receives whether the closing sign stands inside, doubled.
qsizetype endOfQuoted(QStringView text, qsizetype from, bool& doubled);

/// The end of the comment that begins at `from`, or `from` when none begins there.
qsizetype endOfComment(QStringView text, qsizetype from);

/// A statement with its literals taken out.
class Shape {
public:
    /// Reads `tsql` in one pass. Throws `Refusal` for a quote without end and for control characters.
    void read(QStringView tsql, std::vector<Literal>& literals);

    /// The text with one sign in place of each literal. There are four signs: for a quoted literal, a whole
    /// number, a whole number that may be beyond 64 bits, and a number with a fraction.
    QStringView key() const { return QStringView(m_key.data(), m_length); }

private:
    std::vector<char16_t> m_key; ///< longer than the key, so that it is seldom sized anew
    qsizetype m_length = 0;
};

} // namespace quilla::sql
