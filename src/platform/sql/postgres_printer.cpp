#include "platform/sql/postgres_printer.h"

#include "platform/core/text.h"

#include <array>

namespace quilla::sql {

namespace {

constexpr auto Templates = std::to_array<FunctionTemplate>({
    {u"getdate", 0, u"getdate()"},
    {u"year", 1, u"date_part('year', $1)::integer"},
    {u"month", 1, u"date_part('month', $1)::integer"},
    {u"day", 1, u"date_part('day', $1)::integer"},
    {u"datepart", 1, u"qj_part($p, $1)"},
    {u"datediff", 2, u"qj_datediff($p, $1, $2)"},
    {u"dateadd", 2, u"qj_dateadd($p, $1, $2)"},
    {u"rtrim", 1, u"rtrim($1)"},
    {u"ltrim", 1, u"ltrim($1)"},
    {u"upper", 1, u"upper($1)"},
    {u"lower", 1, u"lower($1)"},
    {u"left", 2, u"substr($1, 1, $2::integer)"},
    {u"right", 2, u"right($1, $2::integer)"},
    {u"substring", 3, u"substr($1, $2::integer, $3::integer)"},
    {u"len", 1, u"length(rtrim($1))"},
    // Places inside a text can't be searched under a collation that passes over case.
    {u"charindex", 2, u"strpos(lower($2) COLLATE \"C\", lower($1) COLLATE \"C\")"},
    {u"replace", 3, u"replace($1 COLLATE \"C\", $2, $3)"},
    {u"str", 1, u"qj_str($1, 10, 0)"},
    {u"str", 2, u"qj_str($1, $2, 0)"},
    {u"str", 3, u"qj_str($1, $2, $3)"},
    {u"isnull", 2, u"coalesce($1, $2)"},
    {u"coalesce", -1, u"coalesce($*)"},
    {u"abs", 1, u"abs($1)"},
    {u"round", 2, u"round($1::numeric, $2::integer)"},
});

/// What PostgreSQL does not take as a bare name.
constexpr auto Keywords = std::to_array<QStringView>({u"all", u"analyse", u"analyze", u"and", u"any",
    u"array", u"as", u"asc", u"asymmetric", u"authorization", u"binary", u"both", u"case", u"cast", u"check",
    u"collate", u"collation", u"column", u"concurrently", u"constraint", u"create", u"cross",
    u"current_catalog", u"current_date", u"current_role", u"current_schema", u"current_time",
    u"current_timestamp", u"current_user", u"default", u"deferrable", u"desc", u"distinct", u"do", u"else",
    u"end", u"except", u"false", u"fetch", u"for", u"foreign", u"freeze", u"from", u"full", u"grant",
    u"group", u"having", u"ilike", u"in", u"initially", u"inner", u"intersect", u"into", u"is", u"isnull",
    u"join", u"lateral", u"leading", u"left", u"like", u"limit", u"localtime", u"localtimestamp", u"natural",
    u"not", u"notnull", u"null", u"offset", u"on", u"only", u"or", u"order", u"outer", u"overlaps",
    u"placing", u"primary", u"references", u"returning", u"right", u"select", u"session_user", u"similar",
    u"some", u"symmetric", u"table", u"tablesample", u"then", u"to", u"trailing", u"true", u"union",
    u"unique", u"user", u"using", u"variadic", u"verbose", u"when", u"where", u"window", u"with"});

constexpr QStringView TextType = u"qj_text";
constexpr QStringView PlainType = u"text";

QStringView parameterType(Kind kind)
{
    switch (kind) {
    case Kind::Integer:
        return u"bigint";
    case Kind::Decimal:
        return u"numeric";
    case Kind::Bit:
        return u"smallint";
    case Kind::Date:
        return u"timestamp";
    case Kind::Text:
    case Kind::Unknown:
        break;
    }
    return {};
}

/// Whether it must be given the type of text columns before it is compared.
bool isLooseText(const Expr& expr)
{
    return expr.type.kind == Kind::Text && expr.op != Op::Column && expr.op != Op::Null;
}

/// Groups by spelling are hashed as bytes, twenty times as fast as under the collation of the columns.
bool isGroupedBySpelling(const Expr& expr)
{
    return expr.perSpelling && expr.type.kind == Kind::Text;
}

} // namespace

QString postgresTextType(int width)
{
    return TextType.toString() + (width ? QString::number(width) : QString());
}

QString postgresNarrowType(int bytes)
{
    return u"qj_int"_s + QString::number(bytes);
}

PostgresPrinter::PostgresPrinter()
    : EnginePrinter(Templates, Keywords)
    , m_textType(PlainType)
{
}

void PostgresPrinter::query(const Query& query, bool inner)
{
    const bool around = std::exchange(m_sorted, !query.orderBy.empty());
    Printer::query(query, inner);
    m_sorted = around;
}

void PostgresPrinter::item(const SelectItem& item, const Select& select, bool inner)
{
    if (isGroupedBySpelling(*item.value)) {
        write(u"(");
        collated(*item.value, Lowest);
        write(u") COLLATE quilla"); // a cast would slip under the first collation
    } else if (inner || select.distinct || m_sorted)
        collated(*item.value, Lowest);
    else
        expression(*item.value);
    if (!item.alias.isEmpty()) write(u" AS "_s + name(item.alias));
}

/// The name of a result column may stand there alone, but in no expression.
void PostgresPrinter::orderItem(const OrderItem& item)
{
    if (item.value->op == Op::Column)
        bare(*item.value);
    else if (item.value->position)
        write(item.value->text);
    else
        collated(*item.value, Lowest);
    write(item.descending ? u" DESC NULLS LAST" : u" NULLS FIRST");
}

void PostgresPrinter::indexColumn(const IndexColumn& column)
{
    write(name(column.name));
    write(column.descending ? u" DESC NULLS LAST" : u" NULLS FIRST");
}

void PostgresPrinter::columnDefinition(const ColumnDefinition& column)
{
    write(name(column.name) + u" "_s + typeName(column.type));
    if (column.identity) write(u" GENERATED ALWAYS AS IDENTITY");
    columnOptions(column);
}

void PostgresPrinter::placeholder(const Expr& literal)
{
    const Kind kind = literal.type.kind;
    const bool text = kind == Kind::Text || kind == Kind::Unknown;
    write(u"?::"_s.append(text ? m_textType : parameterType(kind)));
}

void PostgresPrinter::inlineLiteral(const Expr& literal)
{
    if (literal.type.kind == Kind::Date) write(u"timestamp ");
    EnginePrinter::inlineLiteral(literal);
}

void PostgresPrinter::collated(const Expr& expr, Level around)
{
    if (!isLooseText(expr)) {
        expression(expr, around);
        if (isGroupedBySpelling(expr)) write(u" COLLATE \"C\"");
        return;
    }
    const bool parameter = expr.op == Op::Literal && !isPinned(expr);
    if (parameter) m_textType = TextType;
    expression(expr, Highest);
    m_textType = PlainType;
    if (!parameter) write(u"::"_s.append(TextType));
}

void PostgresPrinter::comparand(const Expr& expr, Level around)
{
    collated(expr, around);
}

/// The pattern is turned into a regular expression once a statement, not once a row: a parameter as the
/// result of a select of its own.
void PostgresPrinter::like(const Expr& expr)
{
    const Expr& pattern = *expr.parts[1];
    const bool parameter = pattern.op == Op::Literal && !isPinned(pattern);
    if (expr.negated) write(u"NOT ");
    write(parameter ? u"qj_like((SELECT qj_pattern(" : u"qj_like(qj_pattern(");
    expression(pattern);
    write(parameter ? u")), " : u"), ");
    expression(*expr.parts[0]);
    write(u")");
}

void PostgresPrinter::function(const Expr& expr)
{
    if (expr.name != u"nullif") return EnginePrinter::function(expr);
    write(u"nullif(");
    list(expr.parts, [this](const ExprPtr& each) { collated(*each, Lowest); });
    write(u")");
}

/// An average has the fraction that the server gives it.
void PostgresPrinter::aggregate(const Expr& expr)
{
    if (expr.name != u"avg") return Printer::aggregate(expr);
    const bool whole = expr.type.kind == Kind::Integer;
    write(whole ? u"trunc(" : u"round(");
    Printer::aggregate(expr);
    write(whole ? u")::bigint"_s : u", "_s + QString::number(QuotientScale) + u")"_s);
}

void PostgresPrinter::divide(const Expr& expr)
{
    if (expr.type.kind != Kind::Decimal) return Printer::binary(expr);
    write(u"round(");
    Printer::binary(expr);
    write(u", "_s + QString::number(expr.type.scale) + u")"_s);
}

QString PostgresPrinter::name(const QString& name) const
{
    if (isPlainName(name)) return name;
    // A keyword is the name that it would be without quotes.
    const bool letters
        = std::all_of(name.begin(), name.end(), [](QChar c) { return c.isLetter() || c == u'_'; });
    return quotedName(letters ? name.toLower() : name);
}

QString PostgresPrinter::typeName(const TypeName& type) const
{
    const Type filled = typeOf(type, false);
    switch (filled.kind) {
    case Kind::Text:
        return postgresTextType(filled.width);
    case Kind::Integer:
        if (filled.bytes == 8) return u"bigint"_s;
        return filled.bytes < 4 ? postgresNarrowType(filled.bytes) : u"integer"_s;
    case Kind::Bit:
        return u"qj_bit"_s;
    case Kind::Date:
        return u"timestamp(3)"_s;
    case Kind::Decimal:
    case Kind::Unknown:
        break;
    }
    return u"numeric("_s + QString::number(filled.width) + u","_s + QString::number(filled.scale) + u")"_s;
}

/// The types keep out what does not belong there.
QString PostgresPrinter::columnCheck(const ColumnDefinition&) const
{
    return {};
}

} // namespace quilla::sql
