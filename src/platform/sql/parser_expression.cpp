#include "platform/sql/parser.h"

#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

/// An expression leans to the left, so its depth grows with a chain of operators.
constexpr int LongestChain = 400;

ExprPtr joined(Op op, ExprPtr left, ExprPtr right)
{
    ExprPtr result = makeExpr(op, left->place);
    result->parts.push_back(std::move(left));
    result->parts.push_back(std::move(right));
    return result;
}

ExprPtr asValue(ExprPtr expr)
{
    if (isCondition(*expr)) refuse(expr->place, u"此处应为值，不能是条件"_s);
    return expr;
}

} // namespace

ExprPtr Parser::conditionChain(ExprPtr (Parser::*part)(), QStringView word, Op op)
{
    ExprPtr first = (this->*part)();
    if (!peek().isWord(word)) return first;
    ExprPtr result = makeExpr(op, first->place);
    result->parts.push_back(std::move(first));
    while (acceptWord(word))
        result->parts.push_back((this->*part)());
    for (const ExprPtr& each : result->parts)
        if (!isCondition(*each)) refuse(each->place, u"此处应为条件"_s);
    return result;
}

ExprPtr Parser::expression()
{
    const Level level(*this);
    return conditionChain(&Parser::andTerm, u"or", Op::Or);
}

ExprPtr Parser::scalar()
{
    return asValue(expression());
}

ExprPtr Parser::andTerm()
{
    return conditionChain(&Parser::notTerm, u"and", Op::And);
}

ExprPtr Parser::notTerm()
{
    const qsizetype place = peek().place;
    if (!acceptWord(u"not")) return predicate();
    const Level level(*this);
    ExprPtr inner = notTerm();
    if (!isCondition(*inner)) refuse(inner->place, u"此处应为条件"_s);
    ExprPtr result = makeExpr(Op::Not, place);
    result->parts.push_back(std::move(inner));
    return result;
}

ExprPtr Parser::predicate()
{
    ExprPtr left = sum();
    const bool negated = acceptWord(u"not");
    if (acceptWord(u"like")) return likeTail(std::move(left), negated);
    if (acceptWord(u"between")) return betweenTail(std::move(left), negated);
    if (acceptWord(u"in")) return inTail(std::move(left), negated);
    if (negated) refuseHere(u"此处应为 like、in 或 between"_s);
    if (acceptWord(u"is")) return isNullTail(std::move(left));
    return comparisonTail(std::move(left));
}

ExprPtr Parser::comparisonTail(ExprPtr left)
{
    static constexpr std::pair<QStringView, Op> Signs[]
        = {{u"=", Op::Equal}, {u"<>", Op::NotEqual}, {u"!=", Op::NotEqual}, {u"<", Op::Less},
            {u"<=", Op::LessEqual}, {u">", Op::Greater}, {u">=", Op::GreaterEqual}};
    for (const auto& [sign, op] : Signs)
        if (acceptSign(sign)) return joined(op, asValue(std::move(left)), asValue(sum()));
    return left;
}

ExprPtr Parser::likeTail(ExprPtr left, bool negated)
{
    ExprPtr result = joined(Op::Like, asValue(std::move(left)), asValue(sum()));
    if (peek().isWord(u"escape")) refuseHere(u"like 没有 escape"_s);
    result->negated = negated;
    return result;
}

ExprPtr Parser::betweenTail(ExprPtr left, bool negated)
{
    ExprPtr result = makeExpr(Op::Between, left->place);
    result->negated = negated;
    result->parts.push_back(asValue(std::move(left)));
    result->parts.push_back(asValue(sum()));
    expectWord(u"and");
    result->parts.push_back(asValue(sum()));
    return result;
}

ExprPtr Parser::inTail(ExprPtr left, bool negated)
{
    const qsizetype place = left->place;
    expectSign(u"(");
    const bool select = peek().isWord(u"select");
    ExprPtr result = makeExpr(select ? Op::InSelect : Op::InList, place);
    result->negated = negated;
    result->parts.push_back(asValue(std::move(left)));
    if (select) {
        result->query = std::make_unique<Query>(query());
    } else {
        do {
            result->parts.push_back(scalar());
        } while (acceptSign(u","));
    }
    expectSign(u")");
    return result;
}

ExprPtr Parser::isNullTail(ExprPtr left)
{
    ExprPtr result = makeExpr(Op::IsNull, left->place);
    result->negated = acceptWord(u"not");
    expectWord(u"null");
    result->parts.push_back(asValue(std::move(left)));
    return result;
}

ExprPtr Parser::chain(ExprPtr (Parser::*part)(), std::initializer_list<std::pair<QStringView, Op>> signs)
{
    ExprPtr result = (this->*part)();
    for (int length = 0;; ++length) {
        const auto sign = std::find_if(signs.begin(), signs.end(),
            [this](const auto& candidate) { return peek().isSign(candidate.first); });
        if (sign == signs.end()) return result;
        if (length >= LongestChain) refuseHere(u"算式太长"_s);
        next();
        ExprPtr right = asValue((this->*part)());
        result = joined(sign->second, asValue(std::move(result)), std::move(right));
    }
}

ExprPtr Parser::sum()
{
    return chain(&Parser::product, {{u"+", Op::Add}, {u"-", Op::Subtract}});
}

ExprPtr Parser::product()
{
    return chain(&Parser::sign, {{u"*", Op::Multiply}, {u"/", Op::Divide}, {u"%", Op::Modulo}});
}

ExprPtr Parser::sign()
{
    const qsizetype place = peek().place;
    const bool minus = peek().isSign(u"-");
    if (!minus && !peek().isSign(u"+")) return primary();
    const Level level(*this);
    next();
    ExprPtr inner = asValue(sign());
    if (!minus) return inner;
    ExprPtr result = makeExpr(Op::Negative, place);
    result->parts.push_back(std::move(inner));
    return result;
}

} // namespace quilla::sql
