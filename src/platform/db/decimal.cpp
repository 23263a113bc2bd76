#include "platform/db/decimal.h"

#include "platform/core/text.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace quilla {

namespace {

constexpr int MostDigits = 100; ///< of a number that is taken for an amount

constexpr bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

/// "[+-]digits[.digits]" taken apart; false for all else, an exponent included.
bool splitDecimal(QStringView text, bool& negative, QStringView& whole, QStringView& fraction)
{
    negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text = text.sliced(1);
    const qsizetype point = text.indexOf(u'.');
    whole = point < 0 ? text : text.first(point);
    fraction = point < 0 ? QStringView() : text.sliced(point + 1);
    return !(whole.isEmpty() && fraction.isEmpty()) && std::all_of(whole.begin(), whole.end(), isDigit)
        && std::all_of(fraction.begin(), fraction.end(), isDigit);
}

/// Counts a row of digits up by one.
void addOne(QString& digits)
{
    qsizetype at = digits.size();
    while (at > 0 && digits[at - 1] == u'9')
        digits[--at] = u'0';
    if (at > 0)
        digits[at - 1] = QChar(digits[at - 1].unicode() + 1);
    else
        digits.prepend(u'1');
}

std::optional<qint64> roundedDouble(std::optional<double> number)
{
    if (!number) return {};
    const double rounded = std::round(*number);
    if (!(std::abs(rounded) < 9.2e18)) return {};
    return qint64(rounded);
}

/// A plain decimal of few digits.
std::optional<double> quickNumber(QStringView text)
{
    char latin[32];
    if (text.isEmpty() || text.size() > qsizetype(sizeof latin)) return {};
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t c = text[i].unicode();
        if (!(c >= u'0' && c <= u'9') && c != u'.' && c != u'-') return {};
        latin[i] = char(c);
    }
    double number = 0;
    const char* const end = latin + text.size();
    const auto read = std::from_chars(latin, end, number, std::chars_format::fixed);
    return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

/// Tabs and their like, which Qt passes over when it reads a number.
bool hasSpaceAround(QStringView text)
{
    return !text.isEmpty() && (text.front().isSpace() || text.back().isSpace());
}

} // namespace

std::optional<double> readNumber(QStringView text)
{
    if (const auto number = quickNumber(text)) return number;
    text = trimBlanks(text);
    bool ok = false;
    const double number = text.toDouble(&ok);
    // "inf" and "nan" are no numbers to a database.
    return ok && std::isfinite(number) && !hasSpaceAround(text) ? std::optional(number) : std::nullopt;
}

std::optional<qint64> readWhole(QStringView text)
{
    text = trimBlanks(text);
    bool ok = false;
    const qint64 number = text.toLongLong(&ok);
    return ok && !hasSpaceAround(text) ? std::optional(number) : std::nullopt;
}

std::optional<qint64> roundedDecimal(QStringView text)
{
    text = trimBlanks(text);
    bool negative = false;
    QStringView whole;
    QStringView fraction;
    if (!splitDecimal(text, negative, whole, fraction)) return roundedDouble(readNumber(text));
    bool ok = true;
    qint64 number = whole.isEmpty() ? 0 : whole.toLongLong(&ok);
    if (!ok) return {};
    const bool up = !fraction.isEmpty() && fraction.front() >= u'5';
    if (up && number < std::numeric_limits<qint64>::max()) ++number;
    return negative ? -number : number;
}

QString roundedTo(QStringView text, int scale)
{
    text = trimBlanks(text);
    bool negative = false;
    QStringView whole;
    QStringView fraction;
    if (!splitDecimal(text, negative, whole, fraction)) {
        if (const auto number = Decimal::read(text)) return number->fixed(scale);
        const auto number = readNumber(text); // of a far exponent, 1e-200
        return number ? QString::number(*number, 'f', scale) : text.toString();
    }
    if (fraction.size() <= scale) return text.toString();
    QString digits = whole.toString() + fraction.first(scale).toString();
    if (fraction[scale] >= u'5') addOne(digits);
    digits.insert(digits.size() - scale, u'.');
    if (negative) digits.prepend(u'-');
    return scale ? digits : digits.chopped(1);
}

Decimal::Decimal(bool negative, QString digits, int scale)
    : m_digits(std::move(digits))
    , m_scale(scale)
{
    for (; m_scale > 0 && m_digits.endsWith(u'0'); --m_scale)
        m_digits.chop(1);
    m_digits = m_digits.rightJustified(m_scale + 1, u'0');
    while (m_digits.size() > m_scale + 1 && m_digits.startsWith(u'0'))
        m_digits.remove(0, 1);
    const bool isZero = m_digits == u"0";
    m_negative = negative && !isZero; // no "-0"
}

std::optional<Decimal> Decimal::read(QStringView text)
{
    text = trimBlanks(text);
    const qsizetype mark = text.indexOf(u'e', 0, Qt::CaseInsensitive);
    bool ok = true;
    const int exponent = mark < 0 ? 0 : text.sliced(mark + 1).toInt(&ok);
    bool negative = false;
    QStringView whole;
    QStringView fraction;
    if (!ok || std::abs(exponent) > MostDigits || text.size() > MostDigits) return {};
    if (!splitDecimal(mark < 0 ? text : text.first(mark), negative, whole, fraction)) return {};
    const int scale = int(fraction.size()) - exponent;
    const QString zeros(std::max(-scale, 0), u'0');
    return Decimal(negative, whole.toString() + fraction.toString() + zeros, std::max(scale, 0));
}

/// By hand, as on paper: the product of two amounts does not fit any number of the machine.
Decimal Decimal::operator*(const Decimal& other) const
{
    std::vector<int> sums(std::size_t(m_digits.size() + other.m_digits.size()), 0);
    for (qsizetype i = m_digits.size(); i-- > 0;) {
        int carry = 0;
        for (qsizetype j = other.m_digits.size(); j-- > 0;) {
            int& place = sums[std::size_t(i + j + 1)];
            const int sum = place + m_digits[i].digitValue() * other.m_digits[j].digitValue() + carry;
            place = sum % 10;
            carry = sum / 10;
        }
        sums[std::size_t(i)] += carry;
    }
    QString digits;
    for (const int digit : sums)
        digits.append(QChar(u'0' + digit));
    return {m_negative != other.m_negative, digits, m_scale + other.m_scale};
}

namespace {

/// The digits of two rows of the same length added, or the smaller taken from the larger.
QString combined(const QString& left, const QString& right, bool add)
{
    QString result(left.size() + 1, u'0');
    int carry = 0;
    for (qsizetype i = left.size(); i-- > 0;) {
        const int digit = right[i].digitValue() + carry;
        const int sum = add ? left[i].digitValue() + digit : left[i].digitValue() - digit + 10;
        result[i + 1] = QChar(u'0' + sum % 10);
        carry = add ? sum / 10 : 1 - sum / 10;
    }
    if (add) result[0] = QChar(u'0' + carry);
    return result;
}

} // namespace

Decimal Decimal::operator+(const Decimal& other) const
{
    const int scale = std::max(m_scale, other.m_scale);
    QString left = m_digits + QString(scale - m_scale, u'0');
    QString right = other.m_digits + QString(scale - other.m_scale, u'0');
    const qsizetype width = std::max(left.size(), right.size());
    left = left.rightJustified(width, u'0');
    right = right.rightJustified(width, u'0');
    if (m_negative == other.m_negative) return {m_negative, combined(left, right, true), scale};
    const bool leftLarger = left >= right; // of one width, digits sort as their numbers do
    return leftLarger ? Decimal(m_negative, combined(left, right, false), scale)
                      : Decimal(other.m_negative, combined(right, left, false), scale);
}

QString Decimal::text() const
{
    QString text = m_digits;
    if (m_scale) text.insert(text.size() - m_scale, u'.');
    return m_negative ? u'-' + text : text;
}

QString Decimal::fixed(int places) const
{
    const int surplus = std::max(m_scale - places, 0);
    QString digits = m_digits.chopped(surplus);
    if (surplus && m_digits[digits.size()] >= u'5') addOne(digits);
    const Decimal rounded(m_negative, digits, m_scale - surplus);
    QString result = rounded.text();
    if (places > 0 && rounded.m_scale == 0) result += u'.';
    return result + QString(places - rounded.m_scale, u'0');
}

DecimalDigits::DecimalDigits(double number)
{
    char* const end = text + sizeof text;
    if (number == 0) number = 0; // no "-0"
    auto written = std::to_chars(text, end, number, std::chars_format::general, 15);
    if (std::string_view(text, std::size_t(written.ptr - text)).find('e') != std::string_view::npos) {
        const double magnitude = std::abs(number);
        const int behind = magnitude >= 1 ? 0 : int(std::min(320.0, 14 - std::floor(std::log10(magnitude))));
        written = std::to_chars(text, end, number, std::chars_format::fixed, behind);
        if (behind)
            while (written.ptr[-1] == '0')
                --written.ptr;
    }
    length = std::size_t(written.ptr - text);
}

} // namespace quilla
