#include "platform/sql/printer.h"

#include "platform/core/text.h"

namespace quilla::sql {

namespace {

bool bindsTightly(QStringView following)
{
    return following.startsWith(u"::") || following.startsWith(u" COLLATE");
}

} // namespace

Printer::Level Printer::levelOf(const Expr& expr)
{
    switch (expr.op) {
    case Op::Or:
        return OrLevel;
    case Op::And:
        return AndLevel;
    case Op::Not:
        return NotLevel;
    case Op::Equal:
    case Op::NotEqual:
    case Op::Less:
    case Op::LessEqual:
    case Op::Greater:
    case Op::GreaterEqual:
    case Op::Like:
    case Op::Between:
    case Op::InList:
    case Op::InSelect:
    case Op::IsNull:
        return CompareLevel;
    case Op::Add:
    case Op::Subtract:
        return SumLevel;
    case Op::Multiply:
    case Op::Divide:
    case Op::Modulo:
        return ProductLevel;
    case Op::Negative:
        return SignLevel;
    default:
        return Highest;
    }
}

QStringView Printer::signOf(Op op) const
{
    switch (op) {
    case Op::Multiply:
        return u" * ";
    case Op::Divide:
        return u" / ";
    case Op::Modulo:
        return u" % ";
    case Op::Add:
        return u" + ";
    case Op::Subtract:
        return u" - ";
    case Op::Equal:
        return u" = ";
    case Op::NotEqual:
        return u" <> ";
    case Op::Less:
        return u" < ";
    case Op::LessEqual:
        return u" <= ";
    case Op::Greater:
        return u" > ";
    case Op::GreaterEqual:
        return u" >= ";
    case Op::And:
        return u" AND ";
    case Op::Or:
        return u" OR ";
    default:
        return {};
    }
}

void Printer::expression(const Expr& expr, Level around)
{
    const bool brackets = levelOf(expr) < around;
    if (brackets) write(u"(");
    bare(expr);
    if (brackets) write(u")");
}

void Printer::bare(const Expr& expr)
{
    switch (expr.op) {
    case Op::Literal:
        return literal(expr);
    case Op::Null:
        return write(u"NULL");
    case Op::Star:
    case Op::Column:
        if (!expr.qualifier.isEmpty()) write(name(expr.qualifier) + u"."_s);
        return write(expr.op == Op::Star ? u"*"_s : name(expr.name));
    case Op::Negative:
        write(u"-");
        return expression(*expr.parts[0], Highest);
    case Op::Not:
        write(u"NOT ");
        return expression(*expr.parts[0], NotLevel);
    case Op::And:
    case Op::Or:
        return chain(expr);
    case Op::Like:
        return like(expr);
    case Op::Function:
        return function(expr);
    case Op::Aggregate:
        return aggregate(expr);
    case Op::Convert:
        return convert(expr);
    case Op::Case:
        return caseOf(expr);
    case Op::Exists:
    case Op::Subquery:
        write(expr.op == Op::Exists ? u"EXISTS (" : u"(");
        query(*expr.query, true);
        return write(u")");
    case Op::Multiply:
    case Op::Divide:
    case Op::Modulo:
    case Op::Add:
    case Op::Subtract:
        return binary(expr);
    default:
        return compare(expr);
    }
}

void Printer::literal(const Expr& expr)
{
    if (expr.quoted)
        write(u"N'"_s + expr.text + u"'"_s);
    else
        write(expr.text);
}

void Printer::binary(const Expr& expr)
{
    const Level level = levelOf(expr);
    expression(*expr.parts[0], level);
    write(signOf(expr.op));
    expression(*expr.parts[1], Level(level + 1));
}

void Printer::compare(const Expr& expr)
{
    collated(*expr.parts[0], SumLevel);
    const QStringView no = expr.negated ? u" NOT" : u"";
    switch (expr.op) {
    case Op::IsNull:
        return write(expr.negated ? u" IS NOT NULL" : u" IS NULL");
    case Op::Between:
        write(no);
        write(u" BETWEEN ");
        comparand(*expr.parts[1], SumLevel);
        write(u" AND ");
        return comparand(*expr.parts[2], SumLevel);
    case Op::InList:
    case Op::InSelect:
        write(no);
        write(u" IN (");
        if (expr.query) query(*expr.query, true);
        for (std::size_t i = 1; i < expr.parts.size(); ++i) {
            if (i > 1) write(u", ");
            comparand(*expr.parts[i], Lowest);
        }
        return write(u")");
    default:
        write(signOf(expr.op));
        return comparand(*expr.parts[1], SumLevel);
    }
}

void Printer::chain(const Expr& expr)
{
    const Level level = levelOf(expr);
    bool first = true;
    for (const ExprPtr& part : expr.parts) {
        if (!first) write(signOf(expr.op));
        first = false;
        expression(*part, Level(level + 1));
    }
}

void Printer::like(const Expr& expr)
{
    expression(*expr.parts[0], SumLevel);
    write(expr.negated ? u" NOT LIKE " : u" LIKE ");
    expression(*expr.parts[1], SumLevel);
}

void Printer::function(const Expr& expr)
{
    write(expr.name + u"("_s + expr.datePart);
    if (!expr.datePart.isEmpty()) write(u", ");
    expressions(expr.parts);
    write(u")");
    if (expr.over.empty()) return;
    write(u" OVER (ORDER BY ");
    list(expr.over, [this](const OrderItem& item) { orderItem(item); });
    write(u")");
}

void Printer::aggregate(const Expr& expr)
{
    write(expr.name + (expr.distinct ? u"(DISTINCT "_s : u"("_s));
    if (expr.parts[0]->op == Op::Star)
        write(u"*");
    else
        collated(*expr.parts[0], Lowest);
    write(u")");
}

void Printer::convert(const Expr& expr)
{
    if (expr.cast) {
        write(u"CAST(");
        expression(*expr.parts[0]);
        return write(u" AS "_s + typeName(expr.target) + u")"_s);
    }
    write(u"CONVERT("_s + typeName(expr.target) + u", "_s);
    expression(*expr.parts[0]);
    if (expr.style >= 0) write(u", "_s + QString::number(expr.style));
    write(u")");
}

void Printer::caseOf(const Expr& expr)
{
    write(u"CASE");
    std::size_t at = 0;
    if (expr.simple) {
        write(u" ");
        collated(*expr.parts[at++], SumLevel);
    }
    const std::size_t end = expr.parts.size() - (expr.hasElse ? 1 : 0);
    for (; at < end; at += 2) {
        write(u" WHEN ");
        comparand(*expr.parts[at], Lowest);
        write(u" THEN ");
        expression(*expr.parts[at + 1]);
    }
    if (expr.hasElse) {
        write(u" ELSE ");
        expression(*expr.parts.back());
    }
    write(u" END");
}

void Printer::collated(const Expr& expr, Level around)
{
    expression(expr, around);
}

void Printer::comparand(const Expr& expr, Level around)
{
    expression(expr, around);
}

/// Writes a template with the call's arguments in their places. What follows an argument without a comma or
/// bracket between them belongs to the argument as a whole.
void Printer::fill(QStringView text, const Expr& call)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'$') {
            write(text.sliced(i, 1));
            continue;
        }
        const QChar what = text[++i];
        const Level around = bindsTightly(text.sliced(i + 1)) ? Highest : Lowest;
        if (what == u'*')
            expressions(call.parts);
        else if (what == u'p')
            write(u"'"_s + call.datePart + u"'"_s);
        else if (what == u'~')
            collated(*call.parts[text[++i].digitValue() - 1], Lowest);
        else
            expression(*call.parts[what.digitValue() - 1], around);
    }
}

} // namespace quilla::sql
