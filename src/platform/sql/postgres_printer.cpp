#include "platform/sql/postgres_printer.h"

#include "platform/core/text.h"
#include "platform/sql/entry_order.h"

#include <algorithm>
#include <array>

namespace quilla::sql {

namespace {

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

/// Whether its texts are of the type of text columns already.
bool isStoredText(const Expr& expr)
{
    const bool nullif = expr.op == Op::Function && expr.name == u"nullif";
    return expr.type.kind == Kind::Text
        && (expr.op == Op::Column || expr.op == Op::Subquery || expr.op == Op::Aggregate || nullif);
}

/// Whether it may be a whole number of 32 bits on the server.
bool isNarrow(const Expr& expr)
{
    return expr.type.kind == Kind::Integer && expr.op != Op::Literal;
}

/// Whether the server gives it the name of a column inside it, which then hides that column in "order by".
bool takesName(const Expr& expr)
{
    return expr.op == Op::Convert || expr.op == Op::Case || expr.op == Op::Subquery;
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
    : EnginePrinter(&FunctionRule::postgres, Keywords)
    , m_textType(PlainType)
{
}

void PostgresPrinter::query(const Query& query, bool inner)
{
    const bool around = std::exchange(m_sorted, !query.orderBy.empty());
    Printer::query(query, inner);
    m_sorted = around;
}

/// As an ordinary text: the server's own conversion would take off the blanks at the end.
void PostgresPrinter::bare(const Expr& expr)
{
    if (expr.op == Op::Negative && isNarrow(*expr.parts[0])) return negative(expr);
    if (!isStoredText(expr)) return Printer::bare(expr);
    write(u"textin(bpcharout(");
    Printer::bare(expr);
    write(u"))");
}

void PostgresPrinter::negative(const Expr& expr)
{
    write(u"-");
    expression(*expr.parts[0], Highest);
    write(u"::bigint");
}

/// As it stands, where a text of the columns' type may stand.
void PostgresPrinter::stored(const Expr& expr, Level around)
{
    if (isStoredText(expr))
        Printer::bare(expr);
    else
        expression(expr, around);
}

void PostgresPrinter::item(const SelectItem& item, const Select& select, bool inner)
{
    if (isGroupedBySpelling(*item.value)) {
        write(u"(");
        collated(*item.value, Lowest);
        write(u") COLLATE quilla"); // a cast would slip under the first collation
    } else if (inner || select.distinct || m_sorted || !select.groupBy.empty())
        collated(*item.value, Lowest);
    else
        stored(*item.value, Lowest);
    if (!item.alias.isEmpty())
        write(u" AS "_s + name(item.alias));
    else if (m_sorted && takesName(*item.value))
        write(u" AS qj_value");
}

/// The name of a result column may stand there alone, but in no expression.
void PostgresPrinter::orderItem(const OrderItem& item)
{
    if (item.value->op == Op::Column)
        Printer::bare(*item.value);
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
        stored(expr, around);
        if (isGroupedBySpelling(expr)) write(u" COLLATE \"C\"");
        return;
    }
    const bool parameter = expr.op == Op::Literal && !isPinned(expr);
    if (parameter) m_textType = TextType;
    stored(expr, Highest);
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
    stored(*expr.parts[0], Lowest);
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

/// Whole numbers are reckoned in 64 bits, as in the embedded database; a parameter has them anyway.
void PostgresPrinter::binary(const Expr& expr)
{
    if (!isNarrow(*expr.parts[0]) || !isNarrow(*expr.parts[1])) return EnginePrinter::binary(expr);
    expression(*expr.parts[0], Highest);
    write(u"::bigint");
    write(signOf(expr.op));
    expression(*expr.parts[1], Level(levelOf(expr) + 1));
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

QString PostgresPrinter::hiddenColumn(const CreateTable& table) const
{
    const bool numbered = std::ranges::any_of(table.columns, &ColumnDefinition::identity);
    return numbered ? QString() : u", %1 bigint GENERATED ALWAYS AS IDENTITY"_s.arg(EntryColumn);
}

/// The types keep out what does not belong there.
QString PostgresPrinter::columnCheck(const ColumnDefinition&) const
{
    return {};
}

} // namespace quilla::sql
