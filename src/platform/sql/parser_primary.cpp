#include "platform/sql/parser.h"

#include "platform/sql/date_parts.h"
#include "platform/sql/statement_refusal.h"

namespace quilla::sql {

namespace {

bool isAggregate(QStringView lower)
{
    for (const QStringView name : {u"count", u"sum", u"avg", u"min", u"max"})
        if (lower == name) return true;
    return false;
}

bool takesDatePart(QStringView lower)
{
    return lower == u"datediff" || lower == u"dateadd" || lower == u"datepart";
}

bool isRanking(QStringView lower)
{
    return lower == u"rank" || lower == u"row_number";
}

/// Day of year and day of week count days where borders between dates are counted.
bool isWholeDay(QStringView part)
{
    return part == u"dayofyear" || part == u"weekday";
}

} // namespace

ExprPtr Parser::primary()
{
    const Token& token = peek();
    if (token.form == Token::Form::Quoted || token.form == Token::Form::Number) return literal();
    if (token.isSign(u"(")) return bracket();
    const qsizetype place = token.place;
    if (acceptWord(u"null")) return makeExpr(Op::Null, place);
    if (acceptWord(u"case")) return caseExpression();
    if (acceptWord(u"exists")) return exists();
    const bool called = token.form == Token::Form::Word && peek(1).isSign(u"(");
    if (called && acceptWord(u"convert")) return convert();
    if (called && acceptWord(u"cast")) return cast();
    if (called) return call();
    return column();
}

ExprPtr Parser::literal()
{
    const Token token = next();
    ExprPtr result = makeExpr(Op::Literal, token.place);
    result->text = token.text.toString();
    result->literal = token.literal;
    result->quoted = token.form == Token::Form::Quoted;
    result->whole = token.whole;
    return result;
}

ExprPtr Parser::bracket()
{
    const qsizetype place = peek().place;
    if (peek(1).isWord(u"select")) return existsOrSubquery(Op::Subquery, place);
    next();
    ExprPtr inner = expression();
    expectSign(u")");
    return inner;
}

ExprPtr Parser::exists()
{
    return existsOrSubquery(Op::Exists, peek().place);
}

ExprPtr Parser::existsOrSubquery(Op op, qsizetype place)
{
    expectSign(u"(");
    ExprPtr result = makeExpr(op, place);
    result->query = std::make_unique<Query>(query());
    expectSign(u")");
    return result;
}

ExprPtr Parser::column()
{
    ExprPtr result = makeExpr(Op::Column, peek().place);
    result->name = name();
    if (acceptSign(u".")) {
        result->qualifier = result->name;
        result->name = name();
    }
    return result;
}

ExprPtr Parser::call()
{
    const Token token = next();
    ExprPtr result = makeExpr(Op::Function, token.place);
    result->name = token.text.toString().toLower();
    expectSign(u"(");
    if (isAggregate(result->name)) return aggregate(std::move(result));
    if (takesDatePart(result->name)) {
        result->datePart = datePartOf(peek().text).toString();
        if (peek().form != Token::Form::Word || result->datePart.isEmpty()) refuseHere(u"不认识的日期部分"_s);
        if (result->name != u"datepart" && isWholeDay(result->datePart)) result->datePart = u"day"_s;
        next();
        expectSign(u",");
    }
    if (!acceptSign(u")")) {
        do {
            result->parts.push_back(scalar());
        } while (acceptSign(u","));
        expectSign(u")");
    }
    if (isRanking(result->name)) result->over = over();
    return result;
}

std::vector<OrderItem> Parser::over()
{
    expectWord(u"over");
    expectSign(u"(");
    expectWord(u"order");
    std::vector<OrderItem> order = orderBy();
    expectSign(u")");
    return order;
}

ExprPtr Parser::aggregate(ExprPtr result)
{
    result->op = Op::Aggregate;
    const qsizetype place = peek().place;
    if (result->name == u"count" && acceptSign(u"*")) {
        result->parts.push_back(makeExpr(Op::Star, place));
    } else {
        result->distinct = acceptWord(u"distinct");
        if (!result->distinct) acceptWord(u"all");
        result->parts.push_back(scalar());
    }
    expectSign(u")");
    return result;
}

ExprPtr Parser::convert()
{
    ExprPtr result = makeExpr(Op::Convert, peek().place);
    expectSign(u"(");
    result->target = typeName();
    expectSign(u",");
    result->parts.push_back(scalar());
    if (acceptSign(u",")) result->style = pinnedInteger();
    expectSign(u")");
    return result;
}

ExprPtr Parser::cast()
{
    ExprPtr result = makeExpr(Op::Convert, peek().place);
    result->cast = true;
    expectSign(u"(");
    result->parts.push_back(scalar());
    expectWord(u"as");
    result->target = typeName();
    expectSign(u")");
    return result;
}

ExprPtr Parser::caseExpression()
{
    const Level level(*this);
    ExprPtr result = makeExpr(Op::Case, peek().place);
    result->simple = !peek().isWord(u"when");
    if (result->simple) result->parts.push_back(scalar());
    do {
        expectWord(u"when");
        result->parts.push_back(result->simple ? scalar() : condition());
        expectWord(u"then");
        result->parts.push_back(scalar());
    } while (peek().isWord(u"when"));
    result->hasElse = acceptWord(u"else");
    if (result->hasElse) result->parts.push_back(scalar());
    expectWord(u"end");
    return result;
}

TypeName Parser::typeName()
{
    TypeName type;
    const qsizetype place = peek().place;
    type.name = name().toLower();
    if (acceptSign(u"(")) {
        type.unlimited = acceptWord(u"max");
        if (!type.unlimited) type.width = pinnedInteger();
        if (!type.unlimited && type.width < 1) refuse(place, u"宽度至少为 1"_s);
        if (acceptSign(u",")) type.scale = pinnedInteger();
        expectSign(u")");
    }
    if (kindOf(type) == Kind::Unknown) refuse(place, u"不认识的类型"_s);
    return type;
}

} // namespace quilla::sql
