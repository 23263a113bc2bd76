#include "platform/sql/postgres_preparation.h"

#include "platform/core/text.h"
#include "platform/sql/entry_order.h"
#include "platform/sql/postgres_printer.h"

#include <set>

namespace quilla::sql {

namespace {

/// The collation sorts by pinyin and passes over case and width, not over accents; the domain passes over
/// blanks at the end as well. It is the order of `compareText`.
constexpr QStringView Types[] = {
    u"CREATE COLLATION quilla (provider = icu, locale = 'zh-u-ks-level2', deterministic = false)",
    u"CREATE DOMAIN qj_text AS bpchar COLLATE quilla",
    u"CREATE DOMAIN qj_bit AS smallint CHECK (VALUE IN (0, 1))",
};

// Bodies of one expression are written into the statement by the planner, and a date part that is a literal
// leaves one branch of them.

constexpr QStringView DateFunctions[] = {
    // The clock at the beginning of the statement: now() would stand still inside a transaction.
    u"CREATE OR REPLACE FUNCTION getdate() RETURNS timestamp LANGUAGE sql STABLE "
    u"RETURN statement_timestamp()::timestamp(3)",

    // Weeks begin on Sunday; Julian day 0 was a Monday.
    u"CREATE OR REPLACE FUNCTION qj_datediff(part text, since timestamp, until timestamp) RETURNS bigint "
    u"LANGUAGE sql IMMUTABLE RETURN CASE part "
    u"WHEN 'day' THEN until::date - since::date "
    u"WHEN 'month' THEN (date_part('year', until) - date_part('year', since)) * 12 "
    u"+ date_part('month', until) - date_part('month', since) "
    u"WHEN 'year' THEN date_part('year', until) - date_part('year', since) "
    u"WHEN 'quarter' THEN (date_part('year', until) - date_part('year', since)) * 4 "
    u"+ date_part('quarter', until) - date_part('quarter', since) "
    u"WHEN 'week' THEN (until::date - date '4714-11-24 BC' + 1) / 7 "
    u"- (since::date - date '4714-11-24 BC' + 1) / 7 "
    u"WHEN 'hour' THEN floor(extract(epoch FROM until) / 3600) - floor(extract(epoch FROM since) / 3600) "
    u"WHEN 'minute' THEN floor(extract(epoch FROM until) / 60) - floor(extract(epoch FROM since) / 60) "
    u"WHEN 'second' THEN floor(extract(epoch FROM until)) - floor(extract(epoch FROM since)) "
    u"WHEN 'millisecond' THEN floor(extract(epoch FROM until) * 1000) "
    u"- floor(extract(epoch FROM since) * 1000) END",

    // The calendar ends with the year 9999.
    u"CREATE OR REPLACE FUNCTION qj_day(at timestamp) RETURNS timestamp LANGUAGE sql IMMUTABLE RETURN CASE "
    u"WHEN at < '0001-01-01' OR at >= '10000-01-01' THEN ('日期超出范围：' || at::text)::timestamp ELSE at END",

    u"CREATE OR REPLACE FUNCTION qj_dateadd(part text, number numeric, at timestamp) RETURNS timestamp "
    u"LANGUAGE sql IMMUTABLE RETURN qj_day(at + CASE part "
    u"WHEN 'day' THEN make_interval(days => trunc(number)::integer) "
    u"WHEN 'month' THEN make_interval(months => trunc(number)::integer) "
    u"WHEN 'year' THEN make_interval(years => trunc(number)::integer) "
    u"WHEN 'quarter' THEN make_interval(months => 3 * trunc(number)::integer) "
    u"WHEN 'week' THEN make_interval(weeks => trunc(number)::integer) "
    u"WHEN 'hour' THEN make_interval(hours => trunc(number)::integer) "
    u"WHEN 'minute' THEN make_interval(mins => trunc(number)::integer) "
    u"WHEN 'second' THEN make_interval(secs => trunc(number)::double precision) "
    u"WHEN 'millisecond' THEN make_interval(secs => trunc(number)::double precision / 1000) END)",

    u"CREATE OR REPLACE FUNCTION qj_part(part text, at timestamp) RETURNS integer "
    u"LANGUAGE sql IMMUTABLE RETURN CASE part "
    u"WHEN 'weekday' THEN date_part('dow', at) + 1 "
    u"WHEN 'dayofyear' THEN date_part('doy', at) "
    u"WHEN 'week' THEN ((date_part('doy', at) + date_part('dow', date_trunc('year', at)) - 1)::integer / 7) "
    u"+ 1 "
    u"WHEN 'second' THEN floor(date_part('second', at)) "
    u"WHEN 'millisecond' THEN floor(date_part('milliseconds', at))::integer % 1000 "
    u"ELSE date_part(part, at) END",

    u"CREATE OR REPLACE FUNCTION qj_convert_date(style integer, at timestamp) RETURNS text "
    u"LANGUAGE sql STABLE RETURN CASE style "
    u"WHEN 23 THEN to_char(at, 'YYYY-MM-DD') "
    u"WHEN 111 THEN to_char(at, 'YYYY/MM/DD') "
    u"WHEN 112 THEN to_char(at, 'YYYYMMDD') "
    u"WHEN 120 THEN to_char(at, 'YYYY-MM-DD HH24:MI:SS') "
    u"ELSE to_char(at, 'Mon') || lpad(to_char(at, 'FMDD'), 3) || to_char(at, ' YYYY') "
    u"|| lpad(to_char(at, 'FMHH12'), 3) || to_char(at, ':MIAM') END",

    // What is no date ends in the failing conversion of a text that names it.
    u"CREATE OR REPLACE FUNCTION qj_date(given text) RETURNS timestamp LANGUAGE sql STABLE RETURN ("
    u"SELECT CASE WHEN given IS NULL THEN NULL "
    u"WHEN m IS NULL THEN ('“' || given || '”不是日期')::timestamp "
    u"ELSE make_timestamp(m[1]::integer, coalesce(m[3], m[5])::integer, coalesce(m[4], m[6])::integer, "
    u"coalesce(m[7], '0')::integer, coalesce(m[8], '0')::integer, "
    u"coalesce(m[9], '0')::double precision) END "
    u"FROM regexp_match(given, '^\\s*(\\d{4})(?:([-/.])(\\d{1,2})\\2(\\d{1,2})|(\\d\\d)(\\d\\d))"
    u"(?:[ T]\\s*(\\d{1,2}):(\\d{1,2})(?::(\\d{1,2}(?:\\.\\d{0,3})?)\\d*)?)?\\s*$') AS m)",
};

// LIKE: "%", "_", "[a-z]", "[^a]"; all else, "\" too, stands for itself. A bracket without its end, and one
// around nothing, fit no text. Blanks at the end of the text may be left over. Neither case nor width counts.
constexpr QStringView TextFunctions[] = {
    u"CREATE OR REPLACE FUNCTION qj_plain(part text) RETURNS text LANGUAGE sql IMMUTABLE "
    u"RETURN regexp_replace(qj_narrow(part), '([!-/:-@\\[-`{-~])', '\\\\\\1', 'g')",

    u"CREATE OR REPLACE FUNCTION qj_set(content text) RETURNS text LANGUAGE sql IMMUTABLE RETURN ("
    u"SELECT CASE WHEN content = '' THEN '(?!)' WHEN content = '^' THEN '.' "
    u"ELSE coalesce('[' || left(content, position('^' IN left(content, 1))) || string_agg(CASE "
    u"WHEN m[3] IS NOT NULL THEN qj_plain(m[3]) "
    u"WHEN qj_narrow(m[1]) COLLATE \"C\" <= qj_narrow(m[2]) THEN qj_plain(m[1]) || '-' || qj_plain(m[2]) END, '') || ']', "
    u"CASE left(content, 1) WHEN '^' THEN '.' ELSE '(?!)' END) END "
    u"FROM regexp_matches(regexp_replace(content, '^\\^', ''), '(.)-(.)|(.)', 'g') AS m)",

    u"CREATE OR REPLACE FUNCTION qj_pattern(pattern text) RETURNS text LANGUAGE sql IMMUTABLE RETURN ("
    u"SELECT CASE WHEN pattern IS NOT NULL THEN '^' || coalesce(string_agg(CASE "
    u"WHEN m[1] IS NOT NULL THEN qj_set(m[1]) WHEN m[2] = '%' THEN '.*' WHEN m[2] = '_' THEN '.' "
    u"WHEN m[2] = '[' THEN '(?!)' ELSE qj_plain(m[2]) END, ''), '') || ' *$' END "
    u"FROM regexp_matches(lower(pattern COLLATE \"und-x-icu\") COLLATE \"C\", '\\[([^]]*)\\]|(.)', 'g') AS "
    u"m)",

    u"CREATE OR REPLACE FUNCTION qj_like(pattern text, given bpchar) RETURNS boolean LANGUAGE sql IMMUTABLE "
    u"RETURN qj_narrow(textin(bpcharout(given))) COLLATE \"und-x-icu\" ~* pattern",

    u"CREATE OR REPLACE FUNCTION qj_convert_text(width integer, digits text) RETURNS text LANGUAGE sql IMMUTABLE "
    u"RETURN CASE WHEN length(digits) > width THEN '*' ELSE digits END",

    u"CREATE OR REPLACE FUNCTION qj_str(number numeric, width bigint, scale bigint) RETURNS text "
    u"LANGUAGE sql IMMUTABLE RETURN CASE "
    u"WHEN length(round(number, least(greatest(scale, 0), 16)::integer)::text) > width "
    u"THEN repeat('*', greatest(width, 0)::integer) "
    u"ELSE lpad(round(number, least(greatest(scale, 0), 16)::integer)::text, width::integer) END",
};

/// The full width forms of ASCII become the characters that they show. Few texts have one, and to look for
/// each of them is dear.
QString narrowing()
{
    QString wide;
    QString narrow;
    for (char16_t c = u'!'; c <= u'~'; ++c) {
        wide += QChar(c - u'!' + 0xff01);
        narrow += QChar(c);
    }
    wide += QChar(0x3000);
    narrow += u' ';
    return u"CREATE OR REPLACE FUNCTION qj_narrow(part text) RETURNS text LANGUAGE sql IMMUTABLE "
           "RETURN CASE WHEN part COLLATE \"C\" ~ '[\uff01-\uff5e\u3000]' THEN translate(part, '%1', '%2') "
           "ELSE part END"_s.arg(wide, narrow.replace(u'\'', u"''"_s));
}

/// The sizes other than 0 that columns of the tables have.
std::set<int> sizes(const Schema& schema, Kind kind, int Column::*size)
{
    std::set<int> found;
    for (const Table& table : schema.tables())
        for (const Column& column : table.columns)
            if (!table.view && column.kind == kind && column.*size > 0) found.insert(column.*size);
    return found;
}

QString narrowType(int bytes)
{
    const QString range = bytes == 1 ? u"0 AND 255"_s : u"-32768 AND 32767"_s;
    return u"CREATE DOMAIN %1 AS integer CHECK (VALUE BETWEEN %2)"_s.arg(postgresNarrowType(bytes), range);
}

/// The functions, and the note of the version, which stays with the base through dumps.
std::vector<QString> functions()
{
    std::vector<QString> statements;
    for (const QStringView text : DateFunctions)
        statements.push_back(text.toString());
    statements.push_back(narrowing());
    for (const QStringView text : TextFunctions)
        statements.push_back(text.toString());
    statements.push_back(u"COMMENT ON COLLATION quilla IS '%1'"_s.arg(PostgresSchemaVersion));
    return statements;
}

} // namespace

std::vector<QString> postgresPreparation(const Schema& schema)
{
    std::vector<QString> statements;
    for (const QStringView text : Types)
        statements.push_back(text.toString());
    for (const int width : sizes(schema, Kind::Text, &Column::width))
        statements.push_back(u"CREATE DOMAIN %1 AS bpchar COLLATE quilla CHECK (char_length(VALUE) <= %2)"_s
                                 .arg(postgresTextType(width))
                                 .arg(width));
    for (const int bytes : sizes(schema, Kind::Integer, &Column::bytes))
        if (bytes < 4) statements.push_back(narrowType(bytes));
    std::ranges::move(functions(), std::back_inserter(statements));
    return statements;
}

std::vector<QString> postgresRenewal(const Schema& schema)
{
    std::vector<QString> statements;
    for (const Table& table : schema.tables())
        if (!table.view && !table.identity())
            statements.push_back(
                u"ALTER TABLE %1 ADD COLUMN IF NOT EXISTS %2 bigint GENERATED ALWAYS AS IDENTITY"_s.arg(
                    table.name, EntryColumn));
    std::ranges::move(functions(), std::back_inserter(statements));
    return statements;
}

} // namespace quilla::sql
