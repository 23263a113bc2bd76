#include "platform/sql/count_selects.h"

#include "platform/core/text.h"

namespace quilla::sql {

ExprPtr makeColumn(const QString& qualifier, const QString& name)
{
    auto column = std::make_unique<Expr>();
    column->op = Op::Column;
    column->qualifier = qualifier;
    column->name = name;
    return column;
}

ExprPtr makeKey(const QString& name)
{
    ExprPtr key = makeColumn({}, name);
    key->perSpelling = true;
    return key;
}

SourcePtr makeDerived(const QString& alias, std::unique_ptr<Query> query)
{
    auto source = std::make_unique<Source>();
    source->form = Source::Form::Derived;
    source->alias = alias;
    source->query = std::move(query);
    return source;
}

ExprPtr makeCount()
{
    auto star = std::make_unique<Expr>();
    star->op = Op::Star;
    auto count = std::make_unique<Expr>();
    count->op = Op::Aggregate;
    count->name = u"count"_s;
    count->parts.push_back(std::move(star));
    return count;
}

ExprPtr copyOf(const Expr& expr)
{
    auto copy = std::make_unique<Expr>();
    copy->op = expr.op;
    copy->place = expr.place;
    for (const ExprPtr& part : expr.parts)
        copy->parts.push_back(copyOf(*part));
    copy->name = expr.name;
    copy->qualifier = expr.qualifier;
    copy->datePart = expr.datePart;
    copy->text = expr.text;
    copy->literal = expr.literal;
    copy->quoted = expr.quoted;
    copy->whole = expr.whole;
    copy->negated = expr.negated;
    copy->distinct = expr.distinct;
    copy->simple = expr.simple;
    copy->hasElse = expr.hasElse;
    copy->target = expr.target;
    copy->style = expr.style;
    copy->cast = expr.cast;
    return copy;
}

namespace {

std::unique_ptr<Query> inOrderOf(const QString& key, Select select)
{
    auto query = std::make_unique<Query>();
    query->arms.push_back(std::move(select));
    query->orderBy.push_back({makeColumn({}, key), false});
    return query;
}

} // namespace

SourcePtr keysInOrder(const QString& table, const QString& key)
{
    Select keys;
    auto source = std::make_unique<Source>();
    source->name = table;
    keys.from.push_back(std::move(source));
    keys.items.push_back({makeColumn({}, key), {}});
    return makeDerived(table, inOrderOf(key, std::move(keys)));
}

Select countInOrder(const QString& table, const QString& key, const QString& name)
{
    Select count;
    count.from.push_back(keysInOrder(table, key));
    count.items.push_back({makeColumn({}, key), name});
    count.items.push_back({makeCount(), RowsOfKey});
    count.groupBy.push_back(makeColumn({}, key));
    Select all;
    all.all = true;
    all.from.push_back(makeDerived(table, inOrderOf(name, std::move(count))));
    all.items.push_back({makeColumn({}, name), {}});
    all.items.push_back({makeColumn({}, RowsOfKey), {}});
    return all;
}

} // namespace quilla::sql
