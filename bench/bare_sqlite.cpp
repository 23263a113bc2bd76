#include "bench/bare_driver.h"

#include <sqlite3.h>

#include <ctime>

namespace quilla {

namespace {

/// The order of the columns' texts as far as codes need it.
int compare(void*, int leftSize, const void* left, int rightSize, const void* right)
{
    const auto* a = static_cast<const unsigned char*>(left);
    const auto* b = static_cast<const unsigned char*>(right);
    while (leftSize > 0 && a[leftSize - 1] == ' ')
        --leftSize;
    while (rightSize > 0 && b[rightSize - 1] == ' ')
        --rightSize;
    const int both = std::min(leftSize, rightSize);
    for (int at = 0; at < both; ++at) {
        const int x = a[at] >= 'A' && a[at] <= 'Z' ? a[at] + 32 : a[at];
        const int y = b[at] >= 'A' && b[at] <= 'Z' ? b[at] + 32 : b[at];
        if (x != y) return x - y;
    }
    return leftSize - rightSize;
}

void answerNow(sqlite3_context* context, int, sqlite3_value**)
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    std::tm local {};
    localtime_r(&now.tv_sec, &local);
    char text[32];
    const std::size_t seconds = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    const int more
        = std::snprintf(text + seconds, sizeof text - seconds, ".%03d", int(now.tv_nsec / 1'000'000));
    sqlite3_result_text(context, text, int(seconds) + more, SQLITE_TRANSIENT);
}

qint64 dayOf(sqlite3_value* value)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    const auto number = [&text](int at, int count) { return QByteArray(text + at, count).toInt(); };
    return QDate(number(0, 4), number(5, 2), number(8, 2)).toJulianDay();
}

/// Only days are counted.
void answerDifference(sqlite3_context* context, int, sqlite3_value** arguments)
{
    sqlite3_result_int64(context, dayOf(arguments[2]) - dayOf(arguments[1]));
}

/// The desk keeps to the range by itself.
void answerInteger(sqlite3_context* context, int, sqlite3_value** arguments)
{
    sqlite3_result_value(context, arguments[1]);
}

} // namespace

BareSqlite::BareSqlite(const QString& file)
{
    check(sqlite3_open_v2(file.toUtf8().constData(), &m_database, SQLITE_OPEN_READWRITE, nullptr));
    check(sqlite3_create_collation(m_database, "QUILLA", SQLITE_UTF8, nullptr, compare));
    check(
        sqlite3_create_function(m_database, "getdate", 0, SQLITE_UTF8, nullptr, answerNow, nullptr, nullptr));
    check(sqlite3_create_function(m_database, "qj_integer", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
        answerInteger, nullptr, nullptr));
    check(sqlite3_create_function(m_database, "qj_datediff", 3, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
        answerDifference, nullptr, nullptr));
    sqlite3_busy_timeout(m_database, 10'000);
    check(sqlite3_exec(
        m_database, "pragma journal_mode=wal;pragma synchronous=full", nullptr, nullptr, nullptr));
}

BareSqlite::~BareSqlite()
{
    for (sqlite3_stmt* statement : m_statements)
        sqlite3_finalize(statement);
    sqlite3_close(m_database);
}

void BareSqlite::check(int code) const
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        qFatal("%s", sqlite3_errmsg(m_database));
}

int BareSqlite::prepare(const QByteArray& text, bool)
{
    const QByteArray sql = text == "begin" ? QByteArrayLiteral("begin immediate") : text;
    check(sqlite3_prepare_v3(m_database, sql.constData(), int(sql.size()), SQLITE_PREPARE_PERSISTENT,
        &m_statements.emplace_back(), nullptr));
    return int(m_statements.size()) - 1;
}

void BareSqlite::run(const Step& step, const DeskTask& work)
{
    sqlite3_stmt* statement = m_statements[std::size_t(step.prepared)];
    int place = 0;
    for (const Argument& argument : step.arguments) {
        const QByteArray& text = textOf(argument, work);
        ++place;
        if (argument.kind == sql::Kind::Decimal)
            sqlite3_bind_double(statement, place, argument.number);
        else if (argument.kind == sql::Kind::Integer || argument.kind == sql::Kind::Bit)
            sqlite3_bind_int64(statement, place, std::atoll(text.constData()));
        else
            sqlite3_bind_text(statement, place, text.constData(), int(text.size()), SQLITE_STATIC);
    }
    int code = SQLITE_ROW;
    while ((code = sqlite3_step(statement)) == SQLITE_ROW)
        for (int field = 0; field < sqlite3_column_count(statement); ++field)
            sqlite3_column_text(statement, field);
    check(code);
    sqlite3_reset(statement);
}

} // namespace quilla
