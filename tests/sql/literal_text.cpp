#include "sql/literal_text.h"

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <cmath>

namespace quilla::test {

QString canonicalText(const QDateTime& moment)
{
    const bool midnight = moment.time().msecsSinceStartOfDay() == 0;
    return moment.toString(midnight ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd HH:mm:ss.zzz"_s);
}

QString boundText(const sql::Parameter& parameter, const sql::Literal& literal)
{
    QString text = literal.text.toString();
    if (literal.quoted) text.replace(u"''"_s, u"'"_s);
    bool fits = true;
    switch (parameter.kind) {
    case sql::Kind::Integer:
        text.toLongLong(&fits);
        break;
    case sql::Kind::Bit:
        text = text.toDouble(&fits) != 0 ? u"1"_s : u"0"_s;
        break;
    case sql::Kind::Decimal: {
        const double number = text.toDouble(&fits);
        const double scale = std::pow(10.0, parameter.scale);
        if (parameter.scale >= 0) text = QString::number(std::round(number * scale) / scale, 'g', 15);
        break;
    }
    case sql::Kind::Date: {
        const auto moment = readDate(text);
        fits = moment.has_value();
        text = fits ? canonicalText(*moment) : text;
        break;
    }
    case sql::Kind::Text:
    case sql::Kind::Unknown:
        break;
    }
    if (!fits) throw Error(ErrorNumber::CannotConvert, u"test"_s, text);
    return text;
}

} // namespace quilla::test
