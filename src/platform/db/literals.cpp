#include "platform/db/literals.h"

#include "platform/core/text.h"
#include "platform/db/decimal.h"

#include <QStringEncoder>

namespace quilla {

namespace {

Error cannotConvert(const sql::Literal& literal, QStringView to)
{
    return Error(ErrorNumber::CannotConvert, u"Connection"_s,
        u"“%1”不是%2。"_s.arg(literal.text.toString(), to.toString()));
}

/// Sign and up to 18 digits, nothing else.
std::optional<qint64> quickWhole(QStringView text)
{
    const bool negative = text.startsWith(u'-');
    if (negative) text = text.sliced(1);
    if (text.isEmpty() || text.size() > 18) return {};
    qint64 number = 0;
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') return {};
        number = number * 10 + (c.unicode() - u'0');
    }
    return negative ? -number : number;
}

char* undoubleQuotes(char* begin, char* end)
{
    char* out = begin;
    for (const char* in = begin; in != end; ++in) {
        *out++ = *in;
        if (*in == '\'' && in + 1 != end && in[1] == '\'') ++in;
    }
    return out;
}

} // namespace

std::optional<qint64> exactWholeOf(const sql::Literal& literal)
{
    if (const auto number = quickWhole(literal.text)) return number;
    if (literal.quoted && isBlank(literal.text)) return 0;
    return readWhole(literal.text);
}

std::optional<qint64> wholeNumberOf(const sql::Literal& literal)
{
    const auto number = exactWholeOf(literal);
    if (!number && literal.quoted) throw cannotConvert(literal, u"整数");
    return number;
}

bool bitOf(const sql::Literal& literal)
{
    const QStringView text = trimBlanks(literal.text);
    if (text.compare(u"True", Qt::CaseInsensitive) == 0) return true;
    if (text.compare(u"False", Qt::CaseInsensitive) == 0) return false;
    const auto number = wholeNumberOf(literal);
    return number ? *number != 0 : numberOf(literal) != 0;
}

double numberOf(const sql::Literal& literal, int scale)
{
    if (literal.quoted && isBlank(literal.text)) return 0;
    const auto number = scale < 0 ? readNumber(literal.text) : readNumber(roundedTo(literal.text, scale));
    if (!number) throw cannotConvert(literal, u"数字");
    return *number;
}

QString decimalOf(const sql::Literal& literal, int scale)
{
    const QStringView text = trimBlanks(literal.text);
    if (literal.quoted && text.isEmpty()) return u"0"_s;
    if (!readNumber(text)) throw cannotConvert(literal, u"数字");
    return scale < 0 ? text.toString() : roundedTo(text, scale);
}

void refuseOutside(
    const sql::NumberRange& range, const sql::Literal& literal, std::optional<qint64> whole, double number)
{
    if (whole ? range.holds(*whole) : range.holds(number)) return;
    throw Error(ErrorNumber::CannotConvert, u"Connection"_s, range.refusal(literal.text.toString()));
}

Moment momentOf(const sql::Literal& literal)
{
    const auto moment = readMoment(literal.text);
    if (!moment) throw cannotConvert(literal, u"日期");
    return *moment;
}

Value valueOf(const sql::Literal& literal)
{
    if (const auto number = literal.quoted ? std::nullopt : exactWholeOf(literal)) return Value(*number);
    QString text = literal.text.toString();
    if (literal.hasDoubledQuote) text.replace(u"''"_s, u"'"_s);
    return literal.quoted ? Value(std::move(text)) : Value(DecimalText {std::move(text)});
}

char* writeUtf8(const sql::Literal& literal, char* out)
{
    char* at = out;
    const char16_t* in = literal.text.utf16();
    const char16_t* const end = in + literal.text.size();
    for (; in != end && *in < 0x80; ++in)
        *at++ = char(*in);
    if (in != end) {
        QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
        at = encoder.appendToBuffer(at, QStringView(in, end));
    }
    return literal.hasDoubledQuote ? undoubleQuotes(out, at) : at;
}

} // namespace quilla
