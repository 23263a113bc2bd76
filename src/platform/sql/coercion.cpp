#include "platform/sql/coercion.h"

#include "platform/sql/parser.h"
#include "platform/sql/scan.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

constexpr int AsShown = 23; ///< the style of a date that is searched like a text: as the screens show it

/// Higher kinds win when two meet.
int rank(Kind kind)
{
    switch (kind) {
    case Kind::Date:
        return 5;
    case Kind::Decimal:
        return 4;
    case Kind::Integer:
        return 3;
    case Kind::Bit:
        return 2;
    case Kind::Text:
        return 1;
    case Kind::Unknown:
        return 0;
    }
    return 0;
}

void wrap(ExprPtr& expr, QStringView typeName, const Type& type, int style = -1)
{
    ExprPtr outer = makeExpr(Op::Convert, expr->place);
    outer->target.name = typeName.toString();
    outer->target.width = type.width;
    outer->target.scale = type.scale;
    outer->style = style;
    outer->type = type;
    outer->parts.push_back(std::move(expr));
    expr = std::move(outer);
}

void convert(ExprPtr& expr, const Type& target)
{
    const Kind from = expr->type.kind;
    const Kind to = target.kind;
    if (from == to || from == Kind::Unknown || to == Kind::Unknown || expr->op == Op::Null) return;
    if (expr->op == Op::Literal
        && expr->quoted) { // whether its text holds that kind is seen when it is bound
        expr->type.kind = to;
        return;
    }
    if (isNumber(from) && isNumber(to)) return;
    if (from == Kind::Text && to == Kind::Date) return wrap(expr, u"datetime", {Kind::Date});
    if (isNumber(from) && to == Kind::Text) return wrap(expr, u"varchar", {Kind::Text, 30});
    if (from == Kind::Text) refuse(expr->place, u"文字不能当作数字使用"_s);
    if (from == Kind::Date) refuse(expr->place, u"日期要先用 convert 变成文字"_s);
    refuse(expr->place, u"数字不能当作日期使用"_s);
}

/// Puts a conversion around a number that goes into a column: it is cut or rounded, and refused outside the
/// column's range.
void store(ExprPtr& expr, const Type& target)
{
    wrap(expr, target.kind == Kind::Integer ? u"int" : u"decimal", target);
    expr->stores = true;
}

/// A column of the same range needs no look at each of its values.
bool fits(const Expr& expr, const Type& target)
{
    const Type& from = expr.type;
    if (expr.op != Op::Column || from.kind != target.kind) return false;
    if (target.kind == Kind::Integer) return from.bytes > 0 && from.bytes <= target.bytes;
    return from.width > 0 && from.scale <= target.scale
        && from.width - from.scale <= target.width - target.scale;
}

void assignLiteral(ExprPtr& expr, const Type& target)
{
    const bool fraction = !expr->quoted && hasFraction(expr->text);
    if (fraction && target.kind == Kind::Integer) return store(expr, target);
    if (expr->quoted || target.kind != Kind::Date)
        expr->type.kind = target.kind == Kind::Unknown ? expr->type.kind : target.kind;
    else
        convert(expr, target);
    if (target.kind == Kind::Decimal) expr->storedScale = target.scale;
    expr->storedRange = rangeOf(target);
}

} // namespace

bool isNumber(Kind kind)
{
    return kind == Kind::Integer || kind == Kind::Decimal || kind == Kind::Bit;
}

void assign(ExprPtr& expr, const Type& target)
{
    if (expr->op == Op::Literal) return assignLiteral(expr, target);
    convert(expr, target);
    if (!isNumber(target.kind) || expr->op == Op::Null) return;
    const Kind from = expr->type.kind;
    if (target.kind != Kind::Bit) {
        if (!fits(*expr, target)) store(expr, target);
    } else if (isNumber(from) && from != Kind::Bit) {
        wrap(expr, u"bit", {Kind::Bit});
    }
}

void pass(ExprPtr& expr, Kind kind)
{
    if (isNumber(kind) && isNumber(expr->type.kind)) return;
    convert(expr, {kind});
}

void searchAsText(ExprPtr& expr)
{
    if (expr->type.kind == Kind::Date)
        wrap(expr, u"varchar", {Kind::Text, 30}, AsShown);
    else
        pass(expr, Kind::Text);
}

Type unify(const std::vector<ExprPtr*>& exprs)
{
    Type result;
    const auto meet = [&](const Expr& expr) {
        const bool wins = rank(expr.type.kind) > rank(result.kind);
        const int width = std::max(expr.type.width, result.width);
        const int scale = std::max(expr.type.scale, result.scale);
        if (wins) result = expr.type;
        result.width = width;
        result.scale = scale;
        result.column = false;
    };
    for (const ExprPtr* each : exprs)
        if ((*each)->op != Op::Literal) meet(**each);
    // A quoted literal never decides over a column, a bare number only over texts that are literals too.
    const bool known = result.kind != Kind::Unknown;
    for (const ExprPtr* each : exprs)
        if ((*each)->op == Op::Literal && (!known || !(*each)->quoted)) meet(**each);
    for (ExprPtr* each : exprs)
        convert(*each, result);
    return result;
}

} // namespace quilla::sql
