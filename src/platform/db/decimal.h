#pragma once

#include <QString>

#include <optional>
#include <string_view>

namespace quilla {

/// The number that a text holds, blanks around it ignored: sign, digits, point, exponent. Nullopt for a
/// text that is none, also for an empty one.
std::optional<double> readNumber(QStringView text);

/// The whole number that a text holds, blanks around it ignored: sign and digits. nullopt for a text that is
/// none, also for an empty one.
std::optional<qint64> readWhole(QStringView text);

/// The whole number nearest to a decimal text, an exact half away from zero, worked out on its digits.
/// Nullopt for a text that is no number or lies outside 64 bits.
std::optional<qint64> roundedDecimal(QStringView text);

/// A decimal text cut to `scale` digits after the point, an exact half away from zero; a text that is no
/// number comes back as it is.
QString roundedTo(QStringView text, int scale);

/// An exact decimal number, as amounts and rates are: read, multiplied and rounded on its digits, never a
/// binary fraction.
class Decimal {
public:
    Decimal() = default; ///< 0
    /// A text that is a number: sign, digits, point, exponent; blanks around it are ignored. Nullopt for any
    /// other and for one of more than a hundred digits.
    static std::optional<Decimal> read(QStringView text);

    Decimal operator*(const Decimal& other) const;
    Decimal operator+(const Decimal& other) const;

    /// As short as it can be written: "2" for 2.000, "0.1".
    QString text() const;
    /// With exactly `places` digits after the point, an exact half away from zero: "0.00" is `fixed(2)`.
    QString fixed(int places) const;

private:
    Decimal(bool negative, QString digits, int scale);

    bool m_negative = false;
    QString m_digits {QStringLiteral("0")}; ///< without the point
    int m_scale = 0; ///< how many of the digits stand after the point
};

/// A binary fraction as the decimal that was meant: 15 digits, no more than needed, never an exponent.
/// 0.1+0.2 is "0.3".
struct DecimalDigits {
    DecimalDigits() { }
    explicit DecimalDigits(double number);
    std::string_view view() const { return {text, length}; }

    char text[336]; ///< the largest double has 309 digits
    std::size_t length = 0;
};

} // namespace quilla
