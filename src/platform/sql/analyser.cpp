#include "platform/sql/analyser.h"

#include "platform/sql/coercion.h"
#include "platform/sql/parser.h"
#include "platform/sql/statement_refusal.h"

#include <algorithm>

namespace quilla::sql {

namespace {

Type typeOf(const Column& column)
{
    return {column.kind, column.width, column.scale, true, column.bytes};
}

Column columnOf(const QString& name, const Type& type)
{
    Column column;
    column.name = name;
    column.kind = type.kind;
    column.width = type.width;
    column.scale = type.scale;
    column.bytes = type.bytes;
    return column;
}

bool same(const QString& left, const QString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

/// What a term of "order by" names by its alias, or null.
const Expr* aliased(const Select& select, const Expr& term)
{
    if (term.op != Op::Column || !term.qualifier.isEmpty()) return nullptr;
    for (const SelectItem& item : select.items)
        if (same(item.alias, term.name)) return item.value.get();
    return nullptr;
}

/// A union is ordered by the columns of its result alone.
const Column& unionColumn(const Expr& term, const std::vector<Column>& columns)
{
    for (const Column& column : columns)
        if (term.op == Op::Column && term.qualifier.isEmpty() && same(column.name, term.name)) return column;
    refuse(term.place, u"union 的结果没有这一列"_s);
}

void refuseTwice(const QString& column, std::vector<QString>& before, qsizetype place)
{
    const bool twice = std::ranges::any_of(before, [&](const QString& each) { return same(each, column); });
    if (twice) refuse(place, u"同一字段写了两次"_s);
    before.push_back(column);
}

} // namespace

Analyser::Analyser(const Schema& schema, Engine engine)
    : m_schema(schema)
    , m_engine(engine)
{
}

std::vector<Column> Analyser::run(Statement& statement)
{
    if (auto* query_ = std::get_if<Query>(&statement)) return query(*query_, nullptr);
    if (auto* view = std::get_if<CreateView>(&statement)) return query(view->query, nullptr);
    if (auto* table = std::get_if<CreateTable>(&statement)) return create(*table);
    if (auto* insert_ = std::get_if<Insert>(&statement)) insert(*insert_);
    if (auto* update_ = std::get_if<Update>(&statement)) update(*update_);
    if (auto* delete_ = std::get_if<Delete>(&statement)) remove(*delete_);
    if (auto* call = std::get_if<Execute>(&statement)) expressions(call->arguments, {});
    return {};
}

std::vector<Column> Analyser::query(Query& query, const Scope* outer, Stars stars)
{
    Scope first;
    std::vector<Column> columns;
    for (Select& arm : query.arms) {
        Scope scope;
        scope.outer = outer;
        std::vector<Column> found = select(arm, scope, stars);
        if (&arm != &query.arms.front()) continue;
        first = std::move(scope);
        columns = std::move(found);
    }
    if (query.arms.size() > 1) unifyArms(query, columns);
    order(query, columns, query.arms.size() > 1 ? nullptr : &first);
    return columns;
}

std::vector<Column> Analyser::select(Select& select, Scope& scope, Stars stars)
{
    for (SourcePtr& source : select.from)
        sourceOf(*source, scope);
    const bool hides = std::ranges::any_of(scope.relations, &Relation::hides);
    if (hides || stars == Stars::Named) nameColumns(select, scope);
    std::vector<Column> columns;
    for (SelectItem& item : select.items) {
        if (item.value->op != Op::Star) expression(item.value, scope);
        const std::vector<Column> found = itemColumns(item, scope);
        columns.insert(columns.end(), found.begin(), found.end());
    }
    if (select.where) expression(select.where, scope);
    expressions(select.groupBy, scope);
    if (select.having) expression(select.having, scope);
    return columns;
}

void Analyser::sourceOf(Source& source, Scope& scope)
{
    switch (source.form) {
    case Source::Form::Table: {
        const Table* table = m_schema.table(source.name);
        const QString name = source.alias.isEmpty() ? source.name : source.alias;
        const bool hides = m_engine == Engine::Postgres && table && !table->view && !table->identity();
        scope.relations.push_back({name, table ? table->columns : std::vector<Column>(), hides});
        if (!table) scope.complete = false;
        break;
    }
    case Source::Form::Derived:
        scope.relations.push_back({source.alias, query(*source.query, scope.outer)});
        break;
    case Source::Form::Join:
        sourceOf(*source.left, scope);
        sourceOf(*source.right, scope);
        if (source.on) expression(source.on, scope);
        break;
    }
}

std::vector<Column> Analyser::itemColumns(const SelectItem& item, const Scope& scope) const
{
    if (item.value->op == Op::Star) return starColumns(*item.value, scope);
    const bool isColumn = item.value->op == Op::Column;
    const QString name = isColumn && item.alias.isEmpty() ? item.value->name : item.alias;
    return {columnOf(name, isColumn ? item.value->type : withoutRange(item.value->type))};
}

/// "*" becomes the columns that it stands for, where they are known.
void Analyser::nameColumns(Select& select, const Scope& scope)
{
    const auto isKnown = [](const Relation& relation) {
        return !relation.columns.empty()
            && std::ranges::none_of(relation.columns, &QString::isEmpty, &Column::name);
    };
    std::vector<SelectItem> items;
    const auto nameRelation = [&](const Relation& relation, qsizetype place) {
        if (!isKnown(relation)) {
            items.push_back({makeStar(relation.name, place), {}});
            return;
        }
        for (const Column& column : relation.columns)
            items.push_back({makeColumn(relation.name, column.name, place), {}});
    };
    for (SelectItem& item : select.items) {
        const Expr& star = *item.value;
        if (star.op != Op::Star) {
            items.push_back(std::move(item));
            continue;
        }
        for (const Relation& relation : scope.relations)
            if (star.qualifier.isEmpty() || same(star.qualifier, relation.name))
                nameRelation(relation, star.place);
    }
    select.items = std::move(items);
}

std::vector<Column> Analyser::starColumns(const Expr& star, const Scope& scope) const
{
    std::vector<Column> columns;
    for (const Relation& relation : scope.relations)
        if (star.qualifier.isEmpty() || same(star.qualifier, relation.name))
            columns.insert(columns.end(), relation.columns.begin(), relation.columns.end());
    return columns;
}

/// Each column of a union takes one kind from all its arms.
void Analyser::unifyArms(Query& query, std::vector<Column>& columns)
{
    const std::size_t count = query.arms.front().items.size();
    for (const Select& arm : query.arms) {
        for (const SelectItem& item : arm.items)
            if (item.value->op == Op::Star) return;
        if (arm.items.size() != count) refuse(arm.items.front().value->place, u"union 两边的列数不同"_s);
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::vector<ExprPtr*> values;
        for (Select& arm : query.arms)
            values.push_back(&arm.items[i].value);
        columns[i] = columnOf(columns[i].name, withoutRange(unify(values)));
    }
}

/// A term of "order by" is a position, the alias of a column, or an expression.
void Analyser::order(Query& query, const std::vector<Column>& columns, const Scope* scope)
{
    for (OrderItem& item : query.orderBy) {
        Expr& term = *item.value;
        if (term.op == Op::Literal && !term.quoted)
            orderByPosition(term, columns);
        else if (const Expr* named = aliased(query.arms.front(), term))
            term.type = named->type;
        else if (scope)
            expression(item.value, *scope);
        else
            term.type = typeOf(unionColumn(term, columns));
    }
}

void Analyser::orderByPosition(Expr& term, const std::vector<Column>& columns)
{
    const int at = term.text.toInt();
    if (at < 1 || (!columns.empty() && at > int(columns.size()))) refuse(term.place, u"没有这一列"_s);
    term.position = true;
    if (!columns.empty()) term.type = typeOf(columns[at - 1]);
    term.type.column = false;
}

Analyser::Scope Analyser::scopeOf(const QString& table) const
{
    const Table* known = m_schema.table(table);
    Scope scope;
    scope.complete = known;
    scope.relations.push_back({table, known ? known->columns : std::vector<Column>()});
    return scope;
}

void Analyser::insert(Insert& insert)
{
    const Table* table = m_schema.table(insert.table);
    if (insert.columns.empty() && table)
        for (const Column& column : table->columns)
            if (!column.identity) insert.columns.push_back(column.name);
    std::vector<Type> targets;
    std::vector<QString> names;
    for (const QString& name : insert.columns) {
        refuseTwice(name, names, insert.place);
        const Column* column = table ? table->column(name) : nullptr;
        targets.push_back(column ? typeOf(*column) : Type());
    }
    const bool counted = !insert.columns.empty();
    for (std::vector<ExprPtr>& row : insert.rows) {
        if (counted && row.size() != targets.size()) refuse(insert.place, u"列数与值数不同"_s);
        expressions(row, {});
        for (std::size_t i = 0; i < std::min(row.size(), targets.size()); ++i)
            assign(row[i], targets[i]);
    }
    if (!insert.query) return;
    const std::vector<Column> columns = query(*insert.query, nullptr, Stars::Named);
    if (counted && !columns.empty() && columns.size() != targets.size())
        refuse(insert.place, u"列数与值数不同"_s);
    assignItems(*insert.query, targets);
}

void Analyser::assignItems(Query& query, const std::vector<Type>& targets)
{
    for (Select& arm : query.arms) {
        std::size_t at = 0;
        for (SelectItem& item : arm.items) {
            if (item.value->op == Op::Star || at >= targets.size()) return;
            assign(item.value, targets[at++]);
        }
    }
}

void Analyser::update(Update& update)
{
    const Table* table = m_schema.table(update.table);
    const Scope scope = scopeOf(update.table);
    std::vector<QString> names;
    for (Assignment& assignment : update.assignments) {
        refuseTwice(assignment.column, names, assignment.place);
        expression(assignment.value, scope);
        const Column* column = table ? table->column(assignment.column) : nullptr;
        if (column && column->identity) refuse(assignment.place, u"编号由数据库给出，不能修改"_s);
        if (column) assign(assignment.value, typeOf(*column));
    }
    if (update.where) expression(update.where, scope);
}

void Analyser::remove(Delete& remove)
{
    if (remove.where) expression(remove.where, scopeOf(remove.table));
}

std::vector<Column> Analyser::create(CreateTable& table)
{
    std::vector<Column> columns;
    for (ColumnDefinition& definition : table.columns) {
        Column column = columnOf(definition.name, sql::typeOf(definition.type, false));
        column.identity = definition.identity;
        column.nullable = !definition.notNull && !definition.primaryKey && !definition.identity;
        columns.push_back(column);
    }
    Scope scope;
    scope.relations.push_back({table.name, columns});
    for (std::size_t i = 0; i < columns.size(); ++i) {
        ColumnDefinition& definition = table.columns[i];
        if (definition.check) expression(definition.check, scope);
        if (!definition.fallback) continue;
        expression(definition.fallback, {});
        assign(definition.fallback, typeOf(columns[i]));
    }
    for (TableConstraint& constraint : table.constraints)
        if (constraint.check) expression(constraint.check, scope);
    return columns;
}

} // namespace quilla::sql
