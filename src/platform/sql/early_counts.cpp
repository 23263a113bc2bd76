#include "platform/sql/early_counts.h"

#include "platform/core/text.h"
#include "platform/sql/count_selects.h"

#include <algorithm>

namespace quilla::sql {

namespace {

bool same(const QString& left, const QString& right)
{
    return left.compare(right, Qt::CaseInsensitive) == 0;
}

bool isCountOfRows(const Expr& expr)
{
    return expr.op == Op::Aggregate && expr.name == u"count" && expr.parts[0]->op == Op::Star;
}

template <typename AnyExpr, typename Step> void forEachColumn(AnyExpr& expr, const Step& step)
{
    if (expr.op == Op::Column) step(expr);
    for (const ExprPtr& part : expr.parts)
        forEachColumn<AnyExpr>(*part, step);
}

bool holdsSelect(const Expr& expr)
{
    return expr.query || std::any_of(expr.parts.begin(), expr.parts.end(), [](const ExprPtr& part) {
        return holdsSelect(*part);
    });
}

/// One select that counts rows by a single column.
class EarlyCount {
public:
    EarlyCount(Query& query, Select& select, const Schema& schema, Engine engine)
        : m_query(query)
        , m_select(select)
        , m_schema(schema)
        , m_isPostgres(engine == Engine::Postgres)
    {
    }

    void run();

private:
    bool countsByOneColumn() const;
    bool findTables(SourcePtr& source);
    bool isOfCounted(const Expr& column) const;
    void noteUnclearNames(const Expr& expr);
    void noteKeys(const Expr& expr);
    bool applies();
    void splitCondition();
    void noteKeysOfJoins(Source& source);
    Select countOf(const QString& table, const QString& key, const QHash<QString, QString>& names) const;
    Select countBySpelling(
        const QString& table, const QString& key, const QHash<QString, QString>& names) const;
    bool canCountInOrder(const QString& table, const QString& key) const;
    void countOneTableInOrder();
    std::unique_ptr<Query> countsByKey() const;

    Query& m_query;
    Select& m_select;
    const Schema& m_schema;
    const bool m_isPostgres;
    SourcePtr* m_counted = nullptr; ///< the table whose rows are counted
    const Table* m_table = nullptr;
    QString m_name; ///< by which the select knows it
    std::vector<const Table*> m_others;
    QStringList m_keys; ///< its columns that are needed after the count, in lower case
    std::vector<const Expr*> m_before; ///< conditions on it alone
    std::vector<const Expr*> m_behind;
    bool m_clear = true; ///< false when a name may mean more than one table
};

bool EarlyCount::countsByOneColumn() const
{
    if (m_select.top || m_select.distinct || m_select.having || m_select.from.size() != 1) return false;
    if (m_select.groupBy.size() != 1 || m_select.groupBy[0]->op != Op::Column) return false;
    const Expr& group = *m_select.groupBy[0];
    int counts = 0;
    for (const SelectItem& item : m_select.items) {
        const bool isGroup = item.value->op == Op::Column && item.value->name == group.name
            && item.value->qualifier == group.qualifier;
        if (!isGroup && !isCountOfRows(*item.value)) return false;
        counts += isGroup ? 0 : 1;
    }
    return counts == 1;
}

/// The leftmost table is the one that is counted: it keeps its rows in every join on the way to it.
bool EarlyCount::findTables(SourcePtr& source)
{
    if (source->form == Source::Form::Join) {
        if (source->join == JoinKind::Right || source->join == JoinKind::Full) return false;
        return findTables(source->left) && findTables(source->right);
    }
    const Table* table = source->form == Source::Form::Table ? m_schema.table(source->name) : nullptr;
    if (!table) return false;
    if (m_counted) {
        m_others.push_back(table);
        return true;
    }
    m_counted = &source;
    m_table = table;
    m_name = source->alias.isEmpty() ? source->name : source->alias;
    return true;
}

bool EarlyCount::isOfCounted(const Expr& column) const
{
    return column.qualifier.isEmpty() ? m_table->column(column.name) != nullptr
                                      : same(column.qualifier, m_name);
}

void EarlyCount::noteUnclearNames(const Expr& expr)
{
    if (holdsSelect(expr)) m_clear = false;
    forEachColumn(expr, [this](const Expr& column) {
        const bool elsewhere = std::any_of(m_others.begin(), m_others.end(),
            [&](const Table* other) { return other->column(column.name) != nullptr; });
        if (column.qualifier.isEmpty() && elsewhere && m_table->column(column.name)) m_clear = false;
    });
}

void EarlyCount::noteKeys(const Expr& expr)
{
    noteUnclearNames(expr);
    forEachColumn(expr, [this](const Expr& column) {
        const QString key = column.name.toLower();
        if (isOfCounted(column) && !m_keys.contains(key)) m_keys.append(key);
    });
}

void EarlyCount::noteKeysOfJoins(Source& source)
{
    if (source.form != Source::Form::Join) return;
    if (source.on) noteKeys(*source.on);
    noteKeysOfJoins(*source.left);
    noteKeysOfJoins(*source.right);
}

/// Conditions on the counted table alone go before the count.
void EarlyCount::splitCondition()
{
    if (!m_select.where) return;
    const auto place = [this](const Expr& condition) {
        bool alone = !holdsSelect(condition);
        forEachColumn(condition, [&](const Expr& column) { alone = alone && isOfCounted(column); });
        (alone ? m_before : m_behind).push_back(&condition);
    };
    if (m_select.where->op != Op::And) return place(*m_select.where);
    for (const ExprPtr& condition : m_select.where->parts)
        place(*condition);
}

ExprPtr joined(const std::vector<const Expr*>& conditions)
{
    if (conditions.empty()) return {};
    if (conditions.size() == 1) return copyOf(*conditions[0]);
    auto all = std::make_unique<Expr>();
    all->op = Op::And;
    for (const Expr* condition : conditions)
        all->parts.push_back(copyOf(*condition));
    return all;
}

bool EarlyCount::canCountInOrder(const QString& table, const QString& key) const
{
    const Table* const counted = m_schema.table(table);
    return m_isPostgres && m_before.empty() && counted && counted->isIndexedBy(key);
}

/// The rows of each key in one table; `names` maps the columns to that table's own names.
Select EarlyCount::countOf(
    const QString& table, const QString& key, const QHash<QString, QString>& names) const
{
    const QString keyHere = names.value(key.toLower(), key);
    return canCountInOrder(table, keyHere) ? countInOrder(table, keyHere, key)
                                           : countBySpelling(table, key, names);
}

Select EarlyCount::countBySpelling(
    const QString& table, const QString& key, const QHash<QString, QString>& names) const
{
    Select count;
    count.all = true;
    auto source = std::make_unique<Source>();
    source->name = table;
    count.from.push_back(std::move(source));
    const QString keyHere = names.value(key.toLower(), key);
    count.items.push_back({makeKey(keyHere), key});
    count.items.push_back({makeCount(), RowsOfKey});
    count.groupBy.push_back(makeKey(keyHere));
    count.where = joined(m_before);
    if (count.where)
        forEachColumn(*count.where, [&](Expr& column) {
            column.qualifier.clear();
            column.name = names.value(column.name.toLower(), column.name);
        });
    return count;
}

std::unique_ptr<Query> EarlyCount::countsByKey() const
{
    const QString key = m_table->column(m_keys.first())->name;
    auto counts = std::make_unique<Query>();
    if (m_table->unionOf.empty()) counts->arms.push_back(countOf(m_table->name, key, {}));
    for (const UnionArm& arm : m_table->unionOf) {
        QHash<QString, QString> names;
        for (std::size_t i = 0; i < arm.columns.size(); ++i)
            names.insert(m_table->columns[i].name.toLower(), arm.columns[i]);
        counts->arms.push_back(countOf(arm.table, key, names));
    }
    return counts;
}

/// Finds the counted table, its key and what can be asked before the count.
bool EarlyCount::applies()
{
    if (!countsByOneColumn() || !findTables(m_select.from[0])) return false;
    if (m_others.empty() && m_table->unionOf.empty() && !m_isPostgres) return false;
    noteKeysOfJoins(*m_select.from[0]);
    noteKeys(*m_select.groupBy[0]);
    splitCondition();
    for (const Expr* condition : m_before)
        noteUnclearNames(*condition);
    for (const Expr* condition : m_behind)
        noteKeys(*condition);
    return m_clear && m_keys.size() == 1 && m_table->column(m_keys.first());
}

/// The groups of the select are those of the index, in its order.
void EarlyCount::countOneTableInOrder()
{
    const QString key = m_keys.first();
    SourcePtr keys = keysInOrder(m_table->name, key);
    keys->alias = m_name;
    *m_counted = std::move(keys);
    if (m_query.orderBy.empty()) m_query.orderBy.push_back({makeColumn({}, key), false});
}

void EarlyCount::run()
{
    if (!applies()) return;
    const bool isWhole = m_others.empty() && m_behind.empty() && m_query.arms.size() == 1;
    if (isWhole && m_table->unionOf.empty() && canCountInOrder(m_table->name, m_keys.first()))
        return countOneTableInOrder();
    const qsizetype place = (*m_counted)->place;
    *m_counted = makeDerived(m_name, countsByKey());
    (*m_counted)->place = place;
    if (isWhole && m_isPostgres && m_before.empty() && m_query.orderBy.empty())
        m_query.orderBy.push_back({makeColumn({}, m_keys.first()), false});
    m_select.where = joined(m_behind);
    for (SelectItem& item : m_select.items) {
        if (!isCountOfRows(*item.value)) continue;
        item.value->name = u"sum"_s;
        item.value->parts[0] = makeColumn(m_name, RowsOfKey);
    }
}

void walk(Source& source, const Schema& schema, Engine engine)
{
    if (source.query) countEarly(*source.query, schema, engine);
    if (source.left) walk(*source.left, schema, engine);
    if (source.right) walk(*source.right, schema, engine);
}

} // namespace

void countEarly(Query& query, const Schema& schema, Engine engine)
{
    for (Select& arm : query.arms) {
        for (const SourcePtr& source : arm.from)
            walk(*source, schema, engine);
        EarlyCount(query, arm, schema, engine).run();
    }
}

} // namespace quilla::sql
