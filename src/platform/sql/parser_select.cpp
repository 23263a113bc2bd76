#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

void collectLiterals(const Expr& expr, std::vector<int>& literals)
{
    if (expr.op == Op::Literal) literals.push_back(expr.literal);
    for (const ExprPtr& part : expr.parts)
        collectLiterals(*part, literals);
}

/// Whether "*", or "name.*", stands for columns of this source.
bool covers(const Expr& star, const Source& source)
{
    if (source.form == Source::Form::Join) return covers(star, *source.left) || covers(star, *source.right);
    return star.qualifier.isEmpty()
        || sameText(star.qualifier, source.alias.isEmpty() ? source.name : source.alias);
}

void refuseEmptyStars(const Select& select)
{
    for (const SelectItem& item : select.items) {
        const Expr& star = *item.value;
        const auto covered = [&](const SourcePtr& source) { return covers(star, *source); };
        if (star.op == Op::Star && std::ranges::none_of(select.from, covered))
            refuse(star.place, u"from 里没有 * 所指的表"_s);
    }
}

} // namespace

Query Parser::query()
{
    const Level level(*this);
    Query result;
    result.arms.push_back(select());
    while (acceptWord(u"union")) {
        const bool all = acceptWord(u"all");
        result.arms.push_back(select());
        result.arms.back().all = all;
    }
    if (acceptWord(u"order")) result.orderBy = orderBy();
    pinRepeated(result);
    return result;
}

/// An engine must see that what is selected is what is grouped, or sorted among distinct rows. Two
/// parameters are never the same to it, so the literals of both stay where they are.
void Parser::pinRepeated(const Query& query)
{
    std::vector<int> sorted;
    for (const OrderItem& item : query.orderBy)
        collectLiterals(*item.value, sorted);
    for (const Select& arm : query.arms) {
        std::vector<int> grouped;
        for (const ExprPtr& expr : arm.groupBy) {
            if (expr->op == Op::Literal) refuse(expr->place, u"group by 里应为列"_s);
            collectLiterals(*expr, grouped);
        }
        if (grouped.empty() && (!arm.distinct || sorted.empty())) continue;
        for (const SelectItem& item : arm.items)
            collectLiterals(*item.value, grouped);
        if (arm.having) collectLiterals(*arm.having, grouped);
        m_pinned.insert(m_pinned.end(), grouped.begin(), grouped.end());
        m_pinned.insert(m_pinned.end(), sorted.begin(), sorted.end());
    }
}

Select Parser::select()
{
    expectWord(u"select");
    Select result;
    if (acceptWord(u"distinct"))
        result.distinct = true;
    else
        acceptWord(u"all");
    selectTop(result);
    do {
        result.items.push_back(selectItem());
    } while (acceptSign(u","));
    if (acceptWord(u"from")) {
        do {
            result.from.push_back(source());
        } while (acceptSign(u","));
    }
    refuseEmptyStars(result);
    if (acceptWord(u"where")) result.where = condition();
    if (acceptWord(u"group")) {
        expectWord(u"by");
        do {
            result.groupBy.push_back(scalar());
        } while (acceptSign(u","));
    }
    if (acceptWord(u"having")) result.having = condition();
    return result;
}

void Parser::selectTop(Select& result)
{
    if (!acceptWord(u"top")) return;
    const bool bracket = acceptSign(u"(");
    const Token number = peek();
    pinnedInteger();
    if (bracket) expectSign(u")");
    if (peek().isWord(u"percent") || peek().isWord(u"with")) refuseHere(u"top 只接受行数"_s);
    result.top = makeExpr(Op::Literal, number.place);
    result.top->text = number.text.toString();
    result.top->literal = number.literal;
}

SelectItem Parser::selectItem()
{
    SelectItem item;
    const qsizetype place = peek().place;
    if (acceptSign(u"*")) {
        item.value = makeExpr(Op::Star, place);
        return item;
    }
    if (atName() && peek(1).isSign(u".") && peek(2).isSign(u"*")) {
        item.value = makeExpr(Op::Star, place);
        item.value->qualifier = name();
        next();
        next();
        return item;
    }
    item.value = scalar();
    item.alias = alias();
    return item;
}

std::vector<OrderItem> Parser::orderBy()
{
    expectWord(u"by");
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.value = scalar();
        const bool position = item.value->op == Op::Literal && !item.value->quoted;
        if (position) m_pinned.push_back(item.value->literal);
        item.descending = acceptWord(u"desc");
        if (!item.descending) acceptWord(u"asc");
        items.push_back(std::move(item));
    } while (acceptSign(u","));
    return items;
}

std::optional<JoinKind> Parser::joinAhead()
{
    static constexpr std::pair<QStringView, JoinKind> Kinds[]
        = {{u"inner", JoinKind::Inner}, {u"left", JoinKind::Left}, {u"right", JoinKind::Right},
            {u"full", JoinKind::Full}, {u"cross", JoinKind::Cross}};
    if (acceptWord(u"join")) return JoinKind::Inner;
    for (const auto& [word, kind] : Kinds) {
        if (!acceptWord(word)) continue;
        const bool outer = kind == JoinKind::Left || kind == JoinKind::Right || kind == JoinKind::Full;
        if (outer) acceptWord(u"outer");
        expectWord(u"join");
        return kind;
    }
    return {};
}

SourcePtr Parser::source()
{
    const Level level(*this);
    SourcePtr left = primarySource();
    while (const auto kind = joinAhead()) {
        auto join = std::make_unique<Source>();
        join->form = Source::Form::Join;
        join->place = left->place;
        join->join = *kind;
        join->left = std::move(left);
        join->right = primarySource();
        if (*kind != JoinKind::Cross) {
            expectWord(u"on");
            join->on = condition();
        }
        left = std::move(join);
    }
    return left;
}

SourcePtr Parser::primarySource()
{
    const qsizetype place = peek().place;
    if (acceptSign(u"(")) {
        if (!peek().isWord(u"select")) {
            SourcePtr inner = source();
            expectSign(u")");
            return inner;
        }
        auto derived = std::make_unique<Source>();
        derived->form = Source::Form::Derived;
        derived->place = place;
        derived->query = std::make_unique<Query>(query());
        expectSign(u")");
        derived->alias = alias();
        if (derived->alias.isEmpty()) refuseHere(u"子查询需要别名"_s);
        return derived;
    }
    auto table = std::make_unique<Source>();
    table->place = place;
    table->name = objectName();
    table->alias = alias();
    return table;
}

ExprPtr Parser::condition()
{
    ExprPtr result = expression();
    if (!isCondition(*result)) refuse(result->place, u"此处应为条件"_s);
    return result;
}

} // namespace quilla::sql
