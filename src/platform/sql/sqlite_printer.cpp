#include "platform/sql/sqlite_printer.h"

#include "platform/core/text.h"
#include "platform/sql/functions.h"

#include <algorithm>
#include <array>

namespace quilla::sql {

namespace {

/// What SQLite does not take, or takes for something else, as a bare name.
constexpr auto Keywords = std::to_array<QStringView>({u"abort", u"action", u"add", u"after", u"all", u"alter",
    u"always", u"analyze", u"and", u"as", u"asc", u"attach", u"autoincrement", u"before", u"begin",
    u"between", u"by", u"cascade", u"case", u"cast", u"check", u"collate", u"column", u"commit", u"conflict",
    u"constraint", u"create", u"cross", u"current", u"current_date", u"current_time", u"current_timestamp",
    u"database", u"default", u"deferrable", u"deferred", u"delete", u"desc", u"detach", u"distinct", u"do",
    u"drop", u"each", u"else", u"end", u"escape", u"except", u"exclude", u"exclusive", u"exists", u"explain",
    u"fail", u"false", u"filter", u"first", u"following", u"for", u"foreign", u"from", u"full", u"generated",
    u"glob", u"group", u"groups", u"having", u"if", u"ignore", u"immediate", u"in", u"index", u"indexed",
    u"initially", u"inner", u"insert", u"instead", u"intersect", u"into", u"is", u"isnull", u"join", u"key",
    u"last", u"left", u"like", u"limit", u"match", u"materialized", u"natural", u"no", u"not", u"nothing",
    u"notnull", u"null", u"nulls", u"of", u"offset", u"on", u"or", u"order", u"others", u"outer", u"over",
    u"partition", u"plan", u"pragma", u"preceding", u"primary", u"query", u"raise", u"range", u"recursive",
    u"references", u"regexp", u"reindex", u"release", u"rename", u"replace", u"restrict", u"returning",
    u"right", u"rollback", u"row", u"rows", u"savepoint", u"select", u"set", u"table", u"temp", u"temporary",
    u"then", u"ties", u"to", u"transaction", u"trigger", u"true", u"unbounded", u"union", u"unique",
    u"update", u"using", u"vacuum", u"values", u"view", u"virtual", u"when", u"where", u"window", u"with",
    u"without"});

bool losesCollation(const Expr& expr)
{
    return expr.type.kind == Kind::Text && !expr.type.column;
}

constexpr std::size_t DeepestChain = 64;

} // namespace

SqlitePrinter::SqlitePrinter()
    : EnginePrinter(&FunctionRule::sqlite, Keywords)
{
}

void SqlitePrinter::update(const Update& update)
{
    m_changesRows = true;
    EnginePrinter::update(update);
    m_changesRows = false;
}

void SqlitePrinter::remove(const Delete& remove)
{
    m_changesRows = true;
    EnginePrinter::remove(remove);
    m_changesRows = false;
}

/// SQLite 3.40 looks up "in (select ...)" in an index of the table itself, also while it changes that table,
/// and then misses the rows that are gone. A limit, though it is none, makes it list them first.
void SqlitePrinter::limit(const Query& query)
{
    EnginePrinter::limit(query);
    if (m_changesRows && !query.arms.front().top) write(u" LIMIT -1");
}

void SqlitePrinter::item(const SelectItem& item, const Select& select, bool inner)
{
    if (inner || select.distinct)
        collated(*item.value, Lowest);
    else
        expression(*item.value);
    if (!item.alias.isEmpty()) write(u" AS "_s + name(item.alias));
}

void SqlitePrinter::collated(const Expr& expr, Level around)
{
    if (!losesCollation(expr)) return expression(expr, around);
    expression(expr, Highest);
    write(u" COLLATE ");
    write(TextCollation);
}

/// The column at the right brings its collation, unless a converted column stands at the left: to the engine
/// that is still this column, with the order of its numbers.
void SqlitePrinter::compare(const Expr& expr)
{
    const bool sides = expr.op != Op::Between && expr.op != Op::InList && expr.op != Op::InSelect;
    const bool rightBrings
        = sides && expr.parts.size() == 2 && expr.parts[1]->type.column && expr.parts[0]->op != Op::Convert;
    if (!rightBrings && expr.op != Op::IsNull) return Printer::compare(expr);
    expression(*expr.parts[0], SumLevel);
    if (expr.op == Op::IsNull) return write(expr.negated ? u" IS NOT NULL" : u" IS NULL");
    write(signOf(expr.op));
    expression(*expr.parts[1], SumLevel);
}

/// A long chain is written as a balanced tree, since the depth of an expression is limited.
void SqlitePrinter::chain(const Expr& expr)
{
    if (expr.parts.size() <= DeepestChain) return Printer::chain(expr);
    part(expr, 0, expr.parts.size());
}

void SqlitePrinter::part(const Expr& chain, std::size_t from, std::size_t to)
{
    if (to - from == 1) return expression(*chain.parts[from], Level(levelOf(chain) + 1));
    const std::size_t middle = from + (to - from) / 2;
    write(u"(");
    part(chain, from, middle);
    write(signOf(chain.op));
    part(chain, middle, to);
    write(u")");
}

void SqlitePrinter::like(const Expr& expr)
{
    if (expr.negated) write(u"NOT ");
    write(Function::Like);
    write(u"(");
    expression(*expr.parts[1]);
    write(u", ");
    expression(*expr.parts[0]);
    write(u")");
}

/// Reckoned in binary, money would show the error of its fractions, and equal amounts would not be equal.
void SqlitePrinter::binary(const Expr& expr)
{
    const bool modulo = expr.op == Op::Modulo;
    const bool rounds = expr.type.kind == Kind::Decimal && expr.op != Op::Divide;
    if (rounds) write(u"round(");
    if (modulo)
        remainder(expr);
    else
        EnginePrinter::binary(expr);
    if (rounds) endRounding(expr.type.scale);
}

void SqlitePrinter::endRounding(int scale)
{
    write(u", "_s + QString::number(std::max(QuotientScale, scale)) + u")"_s);
}

void SqlitePrinter::aggregate(const Expr& expr)
{
    const bool average = expr.name == u"avg";
    const bool whole = average && expr.type.kind == Kind::Integer;
    const bool fraction = (average || expr.name == u"sum") && expr.type.kind == Kind::Decimal;
    if (whole) write(u"CAST(");
    if (fraction) write(u"round(");
    Printer::aggregate(expr);
    if (whole) write(u" AS INTEGER)");
    if (fraction) endRounding(average ? QuotientScale : expr.type.scale);
}

void SqlitePrinter::divide(const Expr& expr)
{
    const bool fraction = expr.type.kind == Kind::Decimal;
    if (fraction) write(u"round(");
    write(Function::Quotient);
    write(fraction ? u"(CAST(" : u"(");
    expression(*expr.parts[0]);
    write(fraction ? u" AS REAL), " : u", ");
    expression(*expr.parts[1]);
    write(u")");
    if (fraction) write(u", "_s + QString::number(expr.type.scale) + u")"_s);
}

void SqlitePrinter::remainder(const Expr& expr)
{
    write(Function::Remainder);
    write(u"(");
    expressions(expr.parts);
    write(u")");
}

void SqlitePrinter::call(QStringView function, const QString& first, const Expr& second)
{
    write(function);
    write(u"("_s + first + u", "_s);
    expression(second);
    write(u")");
}

void SqlitePrinter::convert(const Expr& expr)
{
    const Expr& from = *expr.parts[0];
    const Kind to = expr.type.kind;
    if (expr.stores) return store(expr);
    if (to == Kind::Text) return toText(expr);
    if (to == from.type.kind && to != Kind::Decimal) return expression(from, Highest);
    if (to == Kind::Date) {
        write(Function::Date);
        write(u"(");
        expression(from);
        return write(u")");
    }
    if (to == Kind::Bit) {
        write(u"(");
        expression(from, SumLevel);
        return write(u" <> 0)");
    }
    write(to == Kind::Integer ? u"CAST(" : u"round(CAST(");
    expression(from);
    write(to == Kind::Integer ? u" AS INTEGER)"_s
                              : u" AS REAL), "_s + QString::number(expr.type.scale) + u")"_s);
}

void SqlitePrinter::store(const Expr& expr)
{
    const Type& column = expr.type;
    if (column.kind == Kind::Integer)
        return call(Function::Integer, QString::number(column.bytes), *expr.parts[0]);
    call(Function::Decimal, u"%1, %2"_s.arg(column.width).arg(column.scale), *expr.parts[0]);
}

void SqlitePrinter::dateToText(const Expr& expr)
{
    const DateStyle style = dateStyle(expr.style);
    const bool cut = expr.type.width > 0 && expr.type.width < style.width;
    if (cut) write(u"substr(");
    call(Function::ConvertDate, QString::number(style.as), *expr.parts[0]);
    if (cut) write(u", 1, "_s + QString::number(expr.type.width) + u")"_s);
}

void SqlitePrinter::numberToText(const Expr& expr)
{
    constexpr int WidestInteger = 20;
    const Expr& from = *expr.parts[0];
    const int width = expr.type.width;
    const bool wide = width == 0 || width >= WidestInteger;
    if (from.type.kind == Kind::Decimal)
        return call(Function::ConvertDecimal, u"%1, %2"_s.arg(wide ? 0 : width).arg(from.type.scale), from);
    if (wide) return fill(u"CAST($1 AS TEXT)", expr);
    call(Function::ConvertText, QString::number(width), from);
}

/// Never in brackets, since no bracket can stand inside those.
QString SqlitePrinter::name(const QString& name) const
{
    return isPlainName(name) ? name : quotedName(name);
}

QString SqlitePrinter::typeName(const TypeName& type) const
{
    switch (kindOf(type)) {
    case Kind::Text:
        return (type.width ? Printer::typeName(type).toUpper() : u"TEXT"_s)
            + u" COLLATE "_s.append(TextCollation);
    case Kind::Integer:
        return u"INTEGER"_s;
    case Kind::Bit:
        return u"BIT"_s;
    case Kind::Date:
        return u"DATETIME TEXT"_s; // the second word gives text affinity: a date must never become a number
    case Kind::Decimal:
    case Kind::Unknown:
        break;
    }
    const Type filled = typeOf(type, false);
    return u"DECIMAL("_s + QString::number(filled.width) + u","_s + QString::number(filled.scale) + u")"_s;
}

void SqlitePrinter::columnDefinition(const ColumnDefinition& column)
{
    write(name(column.name) + u" "_s + typeName(column.type));
    if (column.identity) return write(u" PRIMARY KEY AUTOINCREMENT");
    if (column.primaryKey && !column.notNull) write(u" NOT NULL");
    columnOptions(column);
}

QString SqlitePrinter::columnCheck(const ColumnDefinition& column) const
{
    if (column.identity) return {};
    const Type type = typeOf(column.type, false);
    const QString written = name(column.name);
    switch (type.kind) {
    case Kind::Text:
        if (type.width == 0) return {};
        return u"length(rtrim("_s + written + u")) <= "_s + QString::number(type.width);
    case Kind::Bit:
        return written + u" IN (0, 1)"_s;
    case Kind::Integer:
        return u"typeof("_s + written + u") IN ('integer', 'null')"_s;
    case Kind::Decimal:
        return u"typeof("_s + written + u") IN ('integer', 'real', 'null')"_s;
    case Kind::Date:
        return written + u" GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]*'"_s;
    case Kind::Unknown:
        break;
    }
    return {};
}

} // namespace quilla::sql
