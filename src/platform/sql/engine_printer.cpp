#include "platform/sql/engine_printer.h"

#include "platform/core/dates.h"
#include "platform/sql/postgres_printer.h"
#include "platform/sql/scan.h"
#include "platform/sql/sqlite_printer.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

DateStyle dateStyle(int style)
{
    static constexpr DateStyle Styles[] = {{-1, 0, 19}, {0, 0, 19}, {100, 0, 19}, {20, 120, 19},
        {120, 120, 19}, {23, 23, 10}, {111, 111, 10}, {112, 112, 8}};
    const auto found
        = std::ranges::find_if(Styles, [style](const DateStyle& each) { return each.style == style; });
    return found != std::end(Styles) ? *found : Styles[0];
}

QString canonicalDate(const Expr& literal)
{
    const auto moment = readDate(literal.text);
    if (!moment) refuse(literal.place, u"这不是日期"_s);
    const QString day = moment->date.toString(u"yyyy-MM-dd"_s);
    return moment->isMidnight() ? day : day + moment->time.toString(u" HH:mm:ss.zzz"_s);
}

EnginePrinter::EnginePrinter(QStringView FunctionRule::*functionText, std::span<const QStringView> keywords)
    : m_functionText(functionText)
    , m_keywords(keywords)
{
}

QString EnginePrinter::print(const Statement& statement, const std::vector<int>& pinned)
{
    m_pinned = pinned;
    m_parameters.clear();
    return Printer::print(statement);
}

/// The procedures are run by the program itself on these engines.
void EnginePrinter::execute(const Execute& call)
{
    expressions(call.arguments);
    m_out.clear();
}

bool EnginePrinter::isPinned(const Expr& literal) const
{
    return literal.literal < 0 || std::ranges::find(m_pinned, literal.literal) != m_pinned.end();
}

void EnginePrinter::literal(const Expr& expr)
{
    if (isPinned(expr)) return inlineLiteral(expr);
    m_parameters.push_back({expr.literal, expr.type.kind, expr.storedScale, expr.storedRange});
    placeholder(expr);
}

void EnginePrinter::placeholder(const Expr&)
{
    write(u"?");
}

void EnginePrinter::inlineLiteral(const Expr& literal)
{
    switch (literal.type.kind) {
    case Kind::Text:
    case Kind::Unknown:
        return write(u"'"_s + literal.text + u"'"_s);
    case Kind::Date:
        return write(u"'"_s + canonicalDate(literal) + u"'"_s);
    case Kind::Integer:
    case Kind::Decimal:
    case Kind::Bit:
        break;
    }
    bool isNumber = false;
    literal.text.toDouble(&isNumber);
    if (!isNumber) refuse(literal.place, u"这不是数字"_s);
    write(literal.text.trimmed());
}

void EnginePrinter::top(const Select&) { }

void EnginePrinter::limit(const Query& query)
{
    const ExprPtr& top = query.arms.front().top;
    for (const Select& arm : query.arms)
        if (query.arms.size() > 1 && arm.top) refuse(arm.top->place, u"union 里不能用 top"_s);
    if (top) write(u" LIMIT "_s + top->text);
}

void EnginePrinter::function(const Expr& expr)
{
    if (!expr.over.empty()) return Printer::function(expr);
    const FunctionRule* rule = functionRule(expr.name, int(expr.parts.size()));
    if (!rule || (rule->*m_functionText).isEmpty()) refuse(expr.place, u"不认识的函数"_s);
    fill(rule->*m_functionText, expr);
}

void EnginePrinter::binary(const Expr& expr)
{
    const bool texts = expr.op == Op::Add && expr.type.kind == Kind::Text;
    if (expr.op == Op::Divide) return divide(expr);
    if (!texts) return Printer::binary(expr);
    expression(*expr.parts[0], SumLevel);
    write(u" || ");
    expression(*expr.parts[1], ProductLevel);
}

void EnginePrinter::createTable(const CreateTable& table)
{
    write(u"CREATE TABLE "_s + name(table.name) + u" ("_s);
    list(table.columns, [this](const ColumnDefinition& column) {
        columnDefinition(column);
        const QString check = columnCheck(column);
        if (!check.isEmpty()) write(u" CHECK ("_s + check + u")"_s);
    });
    write(hiddenColumn(table));
    for (const TableConstraint& each : table.constraints) {
        write(u", ");
        constraint(each);
    }
    write(u")");
}

QString EnginePrinter::hiddenColumn(const CreateTable&) const
{
    return {};
}

void EnginePrinter::drop(const Drop& drop)
{
    write(u"DROP "_s + drop.what.toUpper() + u" "_s + name(drop.name));
}

bool EnginePrinter::isPlainName(const QString& name) const
{
    const bool letters = startsWord(name[0].unicode()) && name[0] != u'@' && name[0] != u'#'
        && std::all_of(name.begin(), name.end(),
            [](QChar c) { return continuesWord(c.unicode()) && c != u'@' && c != u'#' && c != u'$'; });
    return letters && std::ranges::find(m_keywords, QStringView(name.toLower())) == m_keywords.end();
}

QString EnginePrinter::quotedName(QString name)
{
    return u'"' + name.replace(u'"', u"\"\""_s) + u'"';
}

std::unique_ptr<EnginePrinter> makePrinter(Engine engine)
{
    if (engine == Engine::Sqlite) return std::make_unique<SqlitePrinter>();
    if (engine == Engine::Postgres) return std::make_unique<PostgresPrinter>();
    return nullptr;
}

void EnginePrinter::toText(const Expr& expr)
{
    const Expr& from = *expr.parts[0];
    const int width = expr.type.width;
    const bool asDate = from.type.kind == Kind::Unknown && expr.style >= 0;
    if (from.type.kind == Kind::Date || asDate) return dateToText(expr);
    if (from.type.kind != Kind::Text) return numberToText(expr);
    const bool fits
        = width == 0 || (from.type.width > 0 && from.type.width <= width && from.op != Op::Literal);
    if (fits) return expression(from, Highest);
    fill(u"substr($1, 1, "_s + QString::number(width) + u")"_s, expr);
}

} // namespace quilla::sql
