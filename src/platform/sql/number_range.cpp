#include "platform/sql/number_range.h"

#include "platform/core/text.h"

#include <cmath>
#include <limits>

namespace quilla::sql {

namespace {

struct Limits {
    qint64 least;
    qint64 most;
};

/// One byte is a number without sign, as the server has it.
Limits limitsOf(int bytes)
{
    constexpr Limits widest {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};
    if (bytes == 1) return {0, std::numeric_limits<quint8>::max()};
    if (bytes == 2) return {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()};
    if (bytes == 4) return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
    return widest;
}

QString largestDecimal(const NumberRange& range)
{
    const QString whole = range.size ? QString(range.size, u'9') : u"0"_s;
    return range.scale ? whole + u'.' + QString(range.scale, u'9') : whole;
}

} // namespace

bool NumberRange::holds(qint64 number) const
{
    if (kind == Kind::Decimal) return holds(double(number));
    const Limits limits = limitsOf(size);
    return kind != Kind::Integer || (number >= limits.least && number <= limits.most);
}

bool NumberRange::holds(double number) const
{
    if (kind == Kind::Decimal) return std::abs(number) < std::pow(10.0, size);
    const Limits limits = limitsOf(size);
    // The largest number of 64 bits is none that a double can be.
    return kind != Kind::Integer || (number >= double(limits.least) && number < double(limits.most) + 1);
}

QString NumberRange::refusal(const QString& number) const
{
    const Limits limits = limitsOf(size);
    const bool whole = kind == Kind::Integer;
    const QString most = whole ? QString::number(limits.most) : largestDecimal(*this);
    const QString least = whole ? QString::number(limits.least) : u'-' + most;
    return u"数字超出了字段的范围。\n%1 不在 %2 到 %3 之间。"_s.arg(number, least, most);
}

} // namespace quilla::sql
