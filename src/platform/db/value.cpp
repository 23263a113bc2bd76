#include "platform/db/value.h"

#include "platform/core/dates.h"
#include "platform/db/decimal.h"

namespace quilla {

sql::Kind Value::kind() const
{
    // In the order of the variant.
    constexpr sql::Kind kinds[] {sql::Kind::Unknown, sql::Kind::Text, sql::Kind::Integer, sql::Kind::Bit,
        sql::Kind::Decimal, sql::Kind::Date};
    return kinds[m_held.index()];
}

QString Value::text() const
{
    switch (kind()) {
    case sql::Kind::Text:
        return std::get<QString>(m_held);
    case sql::Kind::Integer:
        return QString::number(std::get<qint64>(m_held));
    case sql::Kind::Bit:
        return std::get<bool>(m_held) ? u"True"_s : u"False"_s;
    case sql::Kind::Decimal:
        return std::get<DecimalText>(m_held).digits;
    case sql::Kind::Date:
        return localeDateText(std::get<Moment>(m_held));
    case sql::Kind::Unknown:
        break;
    }
    return {};
}

std::optional<qint64> Value::integer() const
{
    switch (kind()) {
    case sql::Kind::Integer:
        return std::get<qint64>(m_held);
    case sql::Kind::Bit:
        return std::get<bool>(m_held) ? 1 : 0;
    case sql::Kind::Decimal:
        return roundedDecimal(std::get<DecimalText>(m_held).digits);
    case sql::Kind::Text:
        return roundedDecimal(std::get<QString>(m_held));
    default:
        return {};
    }
}

std::optional<double> Value::number() const
{
    switch (kind()) {
    case sql::Kind::Integer:
    case sql::Kind::Bit:
        return double(*integer());
    case sql::Kind::Decimal:
        return readNumber(std::get<DecimalText>(m_held).digits);
    case sql::Kind::Text:
        return readNumber(std::get<QString>(m_held));
    default:
        return {};
    }
}

bool Value::isTrue() const
{
    if (kind() == sql::Kind::Text && std::get<QString>(m_held).compare(u"True", Qt::CaseInsensitive) == 0)
        return true;
    return number().value_or(0) != 0;
}

std::optional<Moment> Value::moment() const
{
    if (const auto* moment = std::get_if<Moment>(&m_held))
        return moment->date.isValid() ? std::optional(*moment) : std::nullopt;
    if (const auto* text = std::get_if<QString>(&m_held)) return readMoment(*text);
    return {};
}

} // namespace quilla
