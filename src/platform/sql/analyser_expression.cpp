#include "platform/sql/analyser.h"

#include "platform/sql/coercion.h"
#include "platform/sql/function_rules.h"
#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

std::vector<ExprPtr*> pointers(std::vector<ExprPtr>& exprs, std::size_t from = 0)
{
    std::vector<ExprPtr*> result;
    for (std::size_t i = from; i < exprs.size(); ++i)
        result.push_back(&exprs[i]);
    return result;
}

Type literalType(const Expr& literal)
{
    if (literal.quoted) return {Kind::Text, int(literal.text.size())};
    if (literal.whole) return {Kind::Integer};
    const qsizetype point = literal.text.indexOf(u'.');
    if (point >= 0) return {Kind::Decimal, 0, int(literal.text.size() - point - 1)};
    return {Kind::Decimal, 0, literal.text.contains(u'e', Qt::CaseInsensitive) ? QuotientScale : 0};
}

Kind kindOf(char16_t letter)
{
    switch (letter) {
    case u'd':
        return Kind::Date;
    case u't':
        return Kind::Text;
    case u'i':
        return Kind::Integer;
    case u'm':
    case u'n':
        return Kind::Decimal;
    default:
        return Kind::Unknown;
    }
}

bool isKnownStyle(int style)
{
    static constexpr int Styles[] = {-1, 0, 100, 20, 120, 23, 111, 112};
    return std::ranges::find(Styles, style) != std::end(Styles);
}

} // namespace

void Analyser::expressions(std::vector<ExprPtr>& exprs, const Scope& scope)
{
    for (ExprPtr& expr : exprs)
        expression(expr, scope);
}

void Analyser::expression(ExprPtr& expr, const Scope& scope)
{
    expressions(expr->parts, scope);
    for (OrderItem& item : expr->over)
        expression(item.value, scope);
    settle(expr, scope);
}

/// The parts are settled; now the expression itself.
void Analyser::settle(ExprPtr& expr, const Scope& scope)
{
    switch (expr->op) {
    case Op::Literal:
        expr->type = literalType(*expr);
        return;
    case Op::Column:
        expr->type = lookUp(*expr, scope);
        return;
    case Op::Negative:
        pass(expr->parts[0], Kind::Decimal);
        expr->type = expr->parts[0]->type;
        expr->type.column = false;
        return;
    case Op::Add:
    case Op::Subtract:
    case Op::Multiply:
    case Op::Divide:
    case Op::Modulo:
        return arithmetic(expr);
    case Op::Equal:
    case Op::NotEqual:
    case Op::Less:
    case Op::LessEqual:
    case Op::Greater:
    case Op::GreaterEqual:
    case Op::Between:
    case Op::InList:
        return compare(*expr);
    case Op::Like:
        searchAsText(expr->parts[0]);
        return pass(expr->parts[1], Kind::Text);
    case Op::InSelect:
        return inSelect(*expr, scope);
    case Op::Exists:
    case Op::Subquery:
        return subquery(*expr, scope);
    case Op::Function:
        return function(*expr);
    case Op::Aggregate:
        return aggregate(*expr);
    case Op::Convert:
        return convert(*expr);
    case Op::Case:
        return caseOf(*expr);
    case Op::Null:
    case Op::Star:
    case Op::Not:
    case Op::And:
    case Op::Or:
    case Op::IsNull:
        return;
    }
}

Type Analyser::lookUp(const Expr& column, const Scope& scope) const
{
    for (const Scope* each = &scope; each; each = each->outer) {
        for (const Relation& relation : each->relations) {
            if (!column.qualifier.isEmpty()
                && column.qualifier.compare(relation.name, Qt::CaseInsensitive) != 0)
                continue;
            for (const Column& candidate : relation.columns)
                if (column.name.compare(candidate.name, Qt::CaseInsensitive) == 0)
                    return {candidate.kind, candidate.width, candidate.scale, true, candidate.bytes};
        }
        if (!each->complete) break;
    }
    Type unknown;
    unknown.column = true;
    return unknown;
}

void Analyser::arithmetic(ExprPtr& expr)
{
    const Kind left = expr->parts[0]->type.kind;
    const Kind right = expr->parts[1]->type.kind;
    const bool sum = expr->op == Op::Add || expr->op == Op::Subtract;
    if (sum && left == Kind::Date && isNumber(right)) return addDays(expr);
    const Type meeting = unify(pointers(expr->parts));
    if (meeting.kind == Kind::Date) refuse(expr->place, u"日期只能加减天数"_s);
    if (meeting.kind == Kind::Text && expr->op != Op::Add) refuse(expr->place, u"文字只能相加"_s);
    expr->type = meeting;
    const Type& a = expr->parts[0]->type;
    const Type& b = expr->parts[1]->type;
    if (meeting.kind == Kind::Text) expr->type.width = a.width && b.width ? a.width + b.width : 0;
    if (expr->op == Op::Multiply) expr->type.scale = a.scale + b.scale;
    if (expr->op == Op::Divide) expr->type.scale = QuotientScale;
    if (meeting.kind == Kind::Bit) expr->type.kind = Kind::Integer;
}

/// A date plus a number is so many days later.
void Analyser::addDays(ExprPtr& expr)
{
    ExprPtr call = makeExpr(Op::Function, expr->place);
    call->name = u"dateadd"_s;
    call->datePart = u"day"_s;
    call->type = {Kind::Date};
    ExprPtr days = std::move(expr->parts[1]);
    if (expr->op == Op::Subtract) {
        ExprPtr minus = makeExpr(Op::Negative, days->place);
        minus->type = days->type;
        minus->parts.push_back(std::move(days));
        days = std::move(minus);
    }
    call->parts.push_back(std::move(days));
    call->parts.push_back(std::move(expr->parts[0]));
    expr = std::move(call);
}

void Analyser::compare(Expr& expr)
{
    unify(pointers(expr.parts));
}

void Analyser::inSelect(Expr& expr, const Scope& scope)
{
    const std::vector<Column> columns = query(*expr.query, &scope);
    if (columns.empty()) return;
    if (columns.size() > 1) refuse(expr.place, u"in 里的子查询只能有一列"_s);
    const Kind left = expr.parts[0]->type.kind;
    const Kind right = columns[0].kind;
    const bool known = left != Kind::Unknown && right != Kind::Unknown;
    if (!known || left == right || (isNumber(left) && isNumber(right))) return;
    if (isNumber(left) || isNumber(right)) refuse(expr.place, u"文字不能与数字比较"_s);
    assign(expr.parts[0], {right});
}

void Analyser::subquery(Expr& expr, const Scope& scope)
{
    const std::vector<Column> columns = query(*expr.query, &scope);
    if (expr.op == Op::Exists || columns.empty()) return;
    if (columns.size() > 1) refuse(expr.place, u"作为值的子查询只能有一列"_s);
    expr.type = {columns[0].kind, columns[0].width, columns[0].scale, false};
}

void Analyser::function(Expr& expr)
{
    const int count = int(expr.parts.size());
    const FunctionRule* rule = functionRule(expr.name, count);
    if (!rule) refuse(expr.place, isFunction(expr.name) ? u"参数个数不对"_s : u"不认识的函数"_s);
    Type all;
    if (rule->arguments == u"a") {
        all = unify(pointers(expr.parts));
    } else {
        for (int i = 0; i < count; ++i)
            pass(expr.parts[i],
                kindOf(rule->arguments[std::min<qsizetype>(i, rule->arguments.size() - 1)].unicode()));
    }
    const Type first = count ? expr.parts[0]->type : Type();
    const bool likeFirst = rule->result == u'1' && first.kind != Kind::Unknown;
    if (likeFirst)
        expr.type = first;
    else if (rule->result == u'1' || rule->result == u'a')
        expr.type = all;
    else
        expr.type = {kindOf(rule->result), rule->result == u't' ? first.width : 0, first.scale};
    expr.type.column = false;
    if (expr.name == u"replace" || expr.name == u"str") expr.type.width = 0;
}

void Analyser::aggregate(Expr& expr)
{
    if (expr.name == u"count") {
        expr.type = {Kind::Integer};
        return;
    }
    const Type argument = expr.parts[0]->type;
    const bool adds = expr.name == u"sum" || expr.name == u"avg";
    if (adds && (argument.kind == Kind::Text || argument.kind == Kind::Date))
        refuse(expr.parts[0]->place, u"只有数字可以合计"_s);
    expr.type = argument;
    expr.type.column = false;
    if (argument.kind == Kind::Bit) expr.type.kind = Kind::Integer;
}

void Analyser::convert(Expr& expr)
{
    ExprPtr& from = expr.parts[0];
    expr.type = typeOf(expr.target, true);
    const Kind to = expr.type.kind;
    if (from->op == Op::Literal && from->quoted && to != Kind::Text) from->type.kind = to;
    const Kind kind = from->type.kind;
    if (kind == Kind::Date && isNumber(to)) refuse(from->place, u"日期不能变成数字"_s);
    if (isNumber(kind) && to == Kind::Date) refuse(from->place, u"数字不能变成日期"_s);
    if (!isKnownStyle(expr.style)) refuse(expr.place, u"不认识的日期样式"_s);
}

void Analyser::caseOf(Expr& expr)
{
    std::vector<ExprPtr*> tests;
    std::vector<ExprPtr*> results;
    std::size_t at = 0;
    if (expr.simple) tests.push_back(&expr.parts[at++]);
    const std::size_t end = expr.parts.size() - (expr.hasElse ? 1 : 0);
    for (; at < end; at += 2) {
        if (expr.simple) tests.push_back(&expr.parts[at]);
        results.push_back(&expr.parts[at + 1]);
    }
    if (expr.hasElse) results.push_back(&expr.parts.back());
    if (expr.simple) unify(tests);
    expr.type = unify(results);
}

} // namespace quilla::sql
