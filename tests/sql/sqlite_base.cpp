#include "sql/sqlite_base.h"

#include "platform/core/dates.h"
#include "platform/core/error.h"
#include "platform/core/text.h"

#include <QRegularExpression>

#include <cmath>

namespace quilla::test {

namespace {

QString textOf(sqlite3_value* value)
{
    return QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_value_text(value)));
}

QString canonical(const QDateTime& moment)
{
    const bool midnight = moment.time().msecsSinceStartOfDay() == 0;
    return moment.toString(midnight ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd HH:mm:ss.zzz"_s);
}

void answer(sqlite3_context* context, const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    sqlite3_result_text(context, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

bool anyNull(int count, sqlite3_value** values)
{
    return std::any_of(
        values, values + count, [](auto* each) { return sqlite3_value_type(each) == SQLITE_NULL; });
}

QString patternOf(const QString& like)
{
    QString pattern;
    bool inSet = false;
    for (const QChar c : like) {
        if (inSet || c == u'[') {
            pattern += c;
            inSet = c != u']';
        } else if (c == u'%') {
            pattern += u".*"_s;
        } else {
            pattern += c == u'_' ? u"."_s : QRegularExpression::escape(QString(c));
        }
    }
    return QRegularExpression::anchoredPattern(pattern);
}

void like(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    const QRegularExpression pattern(patternOf(textOf(values[0])),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    sqlite3_result_int(context, pattern.match(textOf(values[1])).hasMatch());
}

void now(sqlite3_context* context, int, sqlite3_value**)
{
    answer(context, u"2004-03-09 08:05:03.000"_s);
}

void dateDifference(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    const QDate from = readDate(textOf(values[1]))->date();
    const QDate to = readDate(textOf(values[2]))->date();
    const QString part = textOf(values[0]);
    const int months = (to.year() - from.year()) * 12 + to.month() - from.month();
    sqlite3_result_int64(context,
        part == u"year"        ? to.year() - from.year()
            : part == u"month" ? months
                               : from.daysTo(to));
}

void dateAdd(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    const QDateTime from = *readDate(textOf(values[2]));
    const int number = sqlite3_value_int(values[1]);
    answer(context, canonical(textOf(values[0]) == u"month" ? from.addMonths(number) : from.addDays(number)));
}

void convertDate(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    static const QHash<int, QString> Styles = {{0, u"MMM dd yyyy hh:mmAP"_s}, {23, u"yyyy-MM-dd"_s},
        {111, u"yyyy/MM/dd"_s}, {112, u"yyyyMMdd"_s}, {120, u"yyyy-MM-dd HH:mm:ss"_s}};
    answer(context, readDate(textOf(values[1]))->toString(Styles[sqlite3_value_int(values[0])]));
}

void convertText(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    const QString text = textOf(values[1]);
    const bool number = sqlite3_value_numeric_type(values[1]) != SQLITE_TEXT;
    const int width = sqlite3_value_int(values[0]);
    answer(context, number && text.size() > width ? u"*"_s : text.left(width));
}

void date(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    if (const auto moment = readDate(textOf(values[0]))) return answer(context, canonical(*moment));
    sqlite3_result_error(context, "no date", -1);
}

void part(sqlite3_context* context, int count, sqlite3_value** values)
{
    if (anyNull(count, values)) return;
    const QDateTime moment = *readDate(textOf(values[1]));
    const bool hour = textOf(values[0]) == u"hour";
    sqlite3_result_int(context, hour ? moment.time().hour() : moment.date().dayOfWeek() % 7 + 1);
}

int collate(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    const auto view
        = [](const void* text, int size) { return QString::fromUtf8(static_cast<const char*>(text), size); };
    return compareText(view(left, leftSize), view(right, rightSize));
}

/// Binds what the translator promised; as strict as the driver.
void bind(sqlite3_stmt* prepared, int at, const sql::Parameter& parameter, const sql::Literal& literal)
{
    QString text = literal.text.toString();
    if (literal.quoted) text.replace(u"''"_s, u"'"_s);
    bool fits = true;
    switch (parameter.kind) {
    case sql::Kind::Integer:
        sqlite3_bind_int64(prepared, at, text.toLongLong(&fits));
        break;
    case sql::Kind::Bit:
        sqlite3_bind_int(prepared, at, text.toDouble(&fits) != 0);
        break;
    case sql::Kind::Decimal: {
        const double scale = std::pow(10.0, std::max(0, parameter.scale));
        const double number = text.toDouble(&fits);
        const double rounded = parameter.scale < 0 ? number : std::round(number * scale) / scale;
        sqlite3_bind_double(prepared, at, rounded);
        break;
    }
    case sql::Kind::Date: {
        const auto moment = readDate(text);
        fits = moment.has_value();
        text = fits ? canonical(*moment) : text;
        [[fallthrough]];
    }
    default: {
        const QByteArray utf8 = text.toUtf8();
        sqlite3_bind_text(prepared, at, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    }
    }
    if (!fits) throw Error(ErrorNumber::CannotConvert, u"test"_s, text);
}

} // namespace

SqliteBase::SqliteBase()
{
    sqlite3_open(":memory:", &m_base);
    sqlite3_create_collation(m_base, "QUILLA", SQLITE_UTF8, nullptr, collate);
    const auto add
        = [this](const char* name, int count, void (*function)(sqlite3_context*, int, sqlite3_value**)) {
              sqlite3_create_function(m_base, name, count, SQLITE_UTF8, nullptr, function, nullptr, nullptr);
          };
    add("getdate", 0, now);
    add("qj_like", 2, like);
    add("qj_datediff", 3, dateDifference);
    add("qj_dateadd", 3, dateAdd);
    add("qj_convert_date", 2, convertDate);
    add("qj_convert_text", 2, convertText);
    add("qj_date", 1, date);
    add("qj_part", 2, part);
}

SqliteBase::~SqliteBase()
{
    sqlite3_close(m_base);
}

void SqliteBase::run(const QByteArray& text)
{
    char* message = nullptr;
    if (sqlite3_exec(m_base, text.constData(), nullptr, nullptr, &message) == SQLITE_OK) return;
    const Error error(sqlite3_errcode(m_base), u"test"_s, QString::fromUtf8(message));
    sqlite3_free(message);
    throw error;
}

QString SqliteBase::run(const sql::Translation& statement, const std::vector<sql::Literal>& literals)
{
    sqlite3_stmt* raw = nullptr;
    sqlite3_prepare_v2(m_base, statement.text.constData(), -1, &raw, nullptr);
    const std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> prepared(raw, sqlite3_finalize);
    const auto failed = [this] {
        return Error(sqlite3_extended_errcode(m_base), u"test"_s, QString::fromUtf8(sqlite3_errmsg(m_base)));
    };
    if (!raw) throw failed();
    for (int i = 0; i < int(statement.parameters.size()); ++i)
        bind(raw, i + 1, statement.parameters[i], literals[statement.parameters[i].literal]);
    QStringList rows;
    int state = SQLITE_ROW;
    while ((state = sqlite3_step(raw)) == SQLITE_ROW) {
        QStringList fields;
        for (int i = 0; i < sqlite3_column_count(raw); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(raw, i));
            fields.append(text ? QString::fromUtf8(text) : u"NULL"_s);
        }
        rows.append(fields.join(u'|'));
    }
    if (state != SQLITE_DONE) throw failed();
    return rows.join(u';');
}

} // namespace quilla::test
