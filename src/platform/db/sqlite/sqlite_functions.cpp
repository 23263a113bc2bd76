#include "platform/db/sqlite/sqlite_functions.h"

#include "platform/core/text.h"
#include "platform/core/text_order.h"
#include "platform/db/decimal.h"
#include "platform/db/sqlite/date_functions.h"
#include "platform/db/sqlite/like_pattern.h"
#include "platform/db/sqlite/text_collation.h"
#include "platform/sql/functions.h"
#include "platform/sql/number_range.h"

#include <cmath>

namespace quilla {

namespace {

/// The arguments of a call and the ways to answer it.
class Call {
public:
    Call(sqlite3_context* context, sqlite3_value** arguments)
        : m_context(context)
        , m_arguments(arguments)
    {
    }

    std::string_view text(int index) const
    {
        const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(m_arguments[index]));
        return {bytes, std::size_t(sqlite3_value_bytes(m_arguments[index]))};
    }
    QString string(int index) const
    {
        return QString::fromUtf8(text(index).data(), qsizetype(text(index).size()));
    }
    qint64 number(int index) const { return sqlite3_value_int64(m_arguments[index]); }
    double real(int index) const { return sqlite3_value_double(m_arguments[index]); }
    int type(int index) const { return sqlite3_value_type(m_arguments[index]); }
    /// Of a text that is a number the type of that number.
    int numericType(int index) const { return sqlite3_value_numeric_type(m_arguments[index]); }

    /// nullopt after it has answered with an error.
    std::optional<Moment> moment(int index) const
    {
        const auto moment = readMoment(text(index));
        if (!moment) fail(u"“%1”不是日期。"_s.arg(string(index)));
        return moment;
    }

    void answerArgument(int index) const { sqlite3_result_value(m_context, m_arguments[index]); }
    void answer(double number) const { sqlite3_result_double(m_context, number); }
    void answer(qint64 number) const { sqlite3_result_int64(m_context, number); }
    void answer(std::string_view text) const
    {
        sqlite3_result_text(m_context, text.data(), int(text.size()), SQLITE_TRANSIENT);
    }
    void answer(const QByteArray& text) const
    {
        answer(std::string_view(text.constData(), std::size_t(text.size())));
    }
    void answer(const Moment& moment) const { answer(CanonicalMoment(moment).view()); }
    void fail(const QString& words) const
    {
        const QByteArray utf8 = words.toUtf8();
        sqlite3_result_error(m_context, utf8.constData(), int(utf8.size()));
        sqlite3_result_error_code(m_context, SQLITE_MISMATCH);
    }
    void failUnknown(int index) const { fail(u"不支持的日期单位或格式，或日期超出范围："_s + string(index)); }

    /// The pattern of an argument, kept for the later rows of the statement while it is a constant there.
    const LikePattern& pattern(int index) const
    {
        if (const void* known = sqlite3_get_auxdata(m_context, index))
            return *static_cast<const LikePattern*>(known);
        auto* made = new LikePattern(text(index));
        sqlite3_set_auxdata(m_context, index, made, [](void* old) { delete static_cast<LikePattern*>(old); });
        return *made;
    }
    StatementTime& time() const { return *static_cast<StatementTime*>(sqlite3_user_data(m_context)); }

private:
    sqlite3_context* m_context;
    sqlite3_value** m_arguments;
};

void now(const Call& call)
{
    call.answer(call.time().now().view());
}

void like(const Call& call)
{
    call.answer(qint64(call.pattern(0).matches(call.text(1))));
}

/// An answer that the function may refuse for the word in argument 0.
template <typename T> void answerOrFail(const Call& call, const std::optional<T>& result)
{
    if (result)
        call.answer(*result);
    else
        call.failUnknown(0);
}

void difference(const Call& call)
{
    const auto from = call.moment(1);
    const auto to = from ? call.moment(2) : std::nullopt;
    if (to) answerOrFail(call, dateDifference(call.text(0), *from, *to));
}

void add(const Call& call)
{
    const auto moment = call.moment(2);
    if (moment) answerOrFail(call, dateAdd(call.text(0), call.number(1), *moment));
}

void part(const Call& call)
{
    const auto moment = call.moment(1);
    if (!moment) return;
    const auto number = datePart(call.text(0), *moment);
    answerOrFail(call, number ? std::optional(qint64(*number)) : std::nullopt);
}

void convertToDateText(const Call& call)
{
    const auto moment = call.moment(1);
    if (moment) answerOrFail(call, convertDate(int(call.number(0)), *moment));
}

/// The first `width` characters of a text.
std::string_view cut(std::string_view text, qint64 width)
{
    const char* at = text.data();
    const char* const end = at + text.size();
    for (qint64 i = 0; i < width && at != end; ++i)
        nextCodePoint(at, end);
    return text.substr(0, std::size_t(at - text.data()));
}

void convertToText(const Call& call)
{
    const qint64 width = call.number(0);
    const std::string_view text = call.text(1);
    const bool overflows = call.type(1) == SQLITE_INTEGER && qint64(text.size()) > width;
    call.answer(overflows ? std::string_view("*") : cut(text, width));
}

Decimal decimalOf(double number)
{
    const DecimalDigits digits(number);
    return Decimal::read(QString::fromLatin1(digits.text, qsizetype(digits.length))).value_or(Decimal());
}

void convertDecimal(const Call& call)
{
    const QString digits = decimalOf(call.real(2)).fixed(int(call.number(1)));
    const qint64 width = call.number(0);
    call.answer((width > 0 && digits.size() > width ? u"*"_s : digits).toUtf8());
}

template <typename Number> void answerInRange(const Call& call, Number number, const sql::NumberRange& range)
{
    if (range.holds(number)) return call.answer(number);
    const DecimalDigits digits {double(number)};
    call.fail(range.refusal(QString::fromLatin1(digits.text, qsizetype(digits.length))));
}

double roundedTo(double number, int scale)
{
    const DecimalDigits digits(number);
    return quilla::roundedTo(QString::fromLatin1(digits.text, qsizetype(digits.length)), scale).toDouble();
}

/// Cut on the decimal digits: 3 may come as 2.9999999999999996.
void storeInteger(const Call& call)
{
    const sql::NumberRange range {sql::Kind::Integer, int(call.number(0)), 0};
    const int type = call.numericType(1);
    if (type == SQLITE_INTEGER) return answerInRange(call, call.number(1), range);
    if (type != SQLITE_FLOAT) return call.answerArgument(1);
    const DecimalDigits digits(call.real(1));
    const double whole = std::trunc(QByteArray(digits.text, qsizetype(digits.length)).toDouble());
    if (!range.holds(whole)) return answerInRange(call, whole, range);
    call.answer(qint64(whole));
}

void storeDecimal(const Call& call)
{
    const int scale = int(call.number(1));
    const sql::NumberRange range {sql::Kind::Decimal, int(call.number(0)) - scale, scale};
    const int type = call.numericType(2);
    if (type == SQLITE_INTEGER) return answerInRange(call, call.number(2), range);
    if (type != SQLITE_FLOAT) return call.answerArgument(2);
    answerInRange(call, roundedTo(call.real(2), scale), range);
}

void toString(const Call& call)
{
    const QString text = decimalOf(call.real(0)).fixed(int(std::clamp<qint64>(call.number(2), 0, 16)));
    const qint64 width = call.number(1);
    call.answer((text.size() > width ? QString(std::max<qint64>(width, 0), u'*') : text.rightJustified(width))
                    .toUtf8());
}

void round(const Call& call)
{
    const qint64 places = std::clamp<qint64>(call.number(1), -18, 18);
    const double unit = std::pow(10.0, double(std::max<qint64>(-places, 0)));
    const int scale = int(std::max<qint64>(places, 0));
    call.answer(decimalOf(call.real(0) / unit).fixed(scale).toDouble() * unit);
}

bool refuseZero(const Call& call)
{
    const bool zero = call.real(1) == 0;
    if (zero) call.fail(u"除数不能为零。"_s);
    return zero;
}

bool areWhole(const Call& call)
{
    return call.type(0) == SQLITE_INTEGER && call.type(1) == SQLITE_INTEGER;
}

void quotient(const Call& call)
{
    if (refuseZero(call)) return;
    if (areWhole(call)) return call.answer(call.number(0) / call.number(1));
    call.answer(call.real(0) / call.real(1));
}

void remainder(const Call& call)
{
    if (refuseZero(call)) return;
    if (areWhole(call)) return call.answer(call.number(0) % call.number(1));
    call.answer(std::fmod(call.real(0), call.real(1)));
}

/// Counted from the first character, places before it included.
void substring(const Call& call)
{
    const qint64 start = call.number(1);
    const qint64 length = std::max<qint64>(call.number(2), 0);
    const std::string_view upTo = cut(call.text(0), std::max<qint64>(start + length - 1, 0));
    const std::string_view before = cut(upTo, std::max<qint64>(start - 1, 0));
    call.answer(upTo.substr(before.size()));
}

void upper(const Call& call)
{
    call.answer(call.string(0).toUpper().toUtf8());
}

void lower(const Call& call)
{
    call.answer(call.string(0).toLower().toUtf8());
}

void toDate(const Call& call)
{
    if (const auto moment = call.moment(0)) call.answer(*moment);
}

using Body = void (*)(const Call&);

/// Every function answers null when an argument is null.
template <Body body> void answerNullForNull(sqlite3_context* context, int count, sqlite3_value** arguments)
{
    for (int i = 0; i < count; ++i)
        if (sqlite3_value_type(arguments[i]) == SQLITE_NULL) return;
    body(Call(context, arguments));
}

struct Function {
    QStringView name;
    int arguments;
    int flags;
    void (*call)(sqlite3_context*, int, sqlite3_value**);
};

constexpr int Pure = SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

constexpr Function functions[] {
    {sql::Function::Now, 0, SQLITE_INNOCUOUS, answerNullForNull<now>},
    {sql::Function::Like, 2, Pure, answerNullForNull<like>},
    {sql::Function::DateDifference, 3, Pure, answerNullForNull<difference>},
    {sql::Function::DateAdd, 3, Pure, answerNullForNull<add>},
    {sql::Function::ConvertDate, 2, Pure, answerNullForNull<convertToDateText>},
    {sql::Function::ConvertText, 2, Pure, answerNullForNull<convertToText>},
    {sql::Function::Date, 1, Pure, answerNullForNull<toDate>},
    {sql::Function::Integer, 2, Pure, answerNullForNull<storeInteger>},
    {sql::Function::Decimal, 3, Pure, answerNullForNull<storeDecimal>},
    {sql::Function::ConvertDecimal, 3, Pure, answerNullForNull<convertDecimal>},
    {sql::Function::Round, 2, Pure, answerNullForNull<round>},
    {sql::Function::Str, 3, Pure, answerNullForNull<toString>},
    {sql::Function::Quotient, 2, Pure, answerNullForNull<quotient>},
    {sql::Function::Remainder, 2, Pure, answerNullForNull<remainder>},
    {sql::Function::Substring, 3, Pure, answerNullForNull<substring>},
    {sql::Function::Upper, 1, Pure, answerNullForNull<upper>},
    {sql::Function::Lower, 1, Pure, answerNullForNull<lower>},
    {sql::Function::Part, 2, Pure, answerNullForNull<part>},
};

template <int (*Compare)(std::string_view, std::string_view)>
int collate(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    return Compare({static_cast<const char*>(left), std::size_t(leftSize)},
        {static_cast<const char*>(right), std::size_t(rightSize)});
}

/// A join over an index that SQLite makes for one statement asks a Bloom filter first. That takes texts of
/// different length for different ones (seen in 3.40), so that "教师 " finds no "教师".
void avoidBloomFilters(sqlite3* database)
{
    constexpr int BloomFilters = 0x00080000; // SQLite names it in no header
    sqlite3_test_control(SQLITE_TESTCTRL_OPTIMIZATIONS, database, BloomFilters);
}

} // namespace

int registerOrder(sqlite3* database, TextOrder order)
{
    const auto compare = order == TextOrder::Pinyin ? collate<compareUtf8> : collate<compareByCodePoint>;
    return sqlite3_create_collation_v2(
        database, sql::TextCollation.toUtf8().constData(), SQLITE_UTF8, nullptr, compare, nullptr);
}

int registerFunctions(sqlite3* database, StatementTime& time)
{
    for (const Function& function : functions) {
        const int code
            = sqlite3_create_function_v2(database, function.name.toUtf8().constData(), function.arguments,
                SQLITE_UTF8 | function.flags, &time, function.call, nullptr, nullptr, nullptr);
        if (code != SQLITE_OK) return code;
    }
    avoidBloomFilters(database);
    return registerOrder(database, TextOrder::Pinyin);
}

} // namespace quilla
