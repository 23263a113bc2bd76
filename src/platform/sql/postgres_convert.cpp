#include "platform/core/text.h"
#include "platform/sql/postgres_printer.h"

namespace quilla::sql {

void PostgresPrinter::convert(const Expr& expr)
{
    const Expr& from = *expr.parts[0];
    const Kind to = expr.type.kind;
    // The server looks at the range by itself.
    if (expr.stores && from.type.kind != Kind::Decimal) return expression(from);
    if (to == Kind::Text) return toText(expr);
    if (to == from.type.kind && to != Kind::Decimal) return expression(from, Highest);
    if (to == Kind::Date) return fill(u"qj_date($1)", expr);
    if (to == Kind::Bit) return fill(u"(($1) <> 0)::integer::smallint", expr);
    if (to == Kind::Decimal)
        return fill((from.type.kind == Kind::Decimal ? u"round($1, "_s : u"round($1::numeric, "_s)
                + QString::number(expr.type.scale) + u")"_s,
            expr);
    fill(from.type.kind == Kind::Decimal ? u"trunc($1)::bigint" : u"$1::bigint", expr);
}

void PostgresPrinter::dateToText(const Expr& expr)
{
    const DateStyle style = dateStyle(expr.style);
    const QString converted = u"qj_convert_date("_s + QString::number(style.as) + u", $1)"_s;
    const bool cut = expr.type.width > 0 && expr.type.width < style.width;
    if (!cut) return fill(converted, expr);
    fill(u"substr("_s + converted + u", 1, "_s + QString::number(expr.type.width) + u")"_s, expr);
}

/// A column has as many digits as its type says; a computed value may have any number.
void PostgresPrinter::numberToText(const Expr& expr)
{
    constexpr int WidestInteger = 20;
    const Expr& from = *expr.parts[0];
    const bool rounded = from.type.kind == Kind::Decimal && from.op != Op::Column;
    const QString digits
        = rounded ? u"round($1, "_s + QString::number(from.type.scale) + u")::text"_s : u"$1::text"_s;
    const int width = expr.type.width;
    if (width == 0 || width >= WidestInteger) return fill(digits, expr);
    fill(u"qj_convert_text("_s + QString::number(width) + u", "_s + digits + u")"_s, expr);
}

} // namespace quilla::sql
