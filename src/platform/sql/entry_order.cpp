#include "platform/sql/entry_order.h"

#include "platform/core/text.h"
#include "platform/sql/parser.h"

#include <algorithm>

namespace quilla::sql {

namespace {

QString nameOf(const Source& source)
{
    return source.alias.isEmpty() ? source.name : source.alias;
}

/// The tables of a select from left to right.
void listSources(Source& source, std::vector<Source*>& sources)
{
    if (source.form != Source::Form::Join) return sources.push_back(&source);
    listSources(*source.left, sources);
    listSources(*source.right, sources);
}

std::vector<Source*> sourcesOf(Select& select)
{
    std::vector<Source*> sources;
    for (const SourcePtr& source : select.from)
        listSources(*source, sources);
    return sources;
}

bool counts(const Expr& expr)
{
    return expr.op == Op::Aggregate
        || std::ranges::any_of(expr.parts, [](const ExprPtr& part) { return counts(*part); });
}

/// Each row of its result is one of its tables' rows.
bool isPlain(const Query& query)
{
    const Select& select = query.arms.front();
    const bool cut = select.top && query.orderBy.empty();
    return query.arms.size() == 1 && !select.from.empty() && !cut && !select.distinct
        && select.groupBy.empty() && !select.having
        && std::ranges::none_of(select.items, [](const SelectItem& item) { return counts(*item.value); });
}

void fixLiterals(Query& query);

/// They are no literals of the statement that the view comes to stand in.
void fixLiterals(Expr& expr)
{
    expr.literal = -1;
    for (const ExprPtr& part : expr.parts)
        fixLiterals(*part);
    if (expr.query) fixLiterals(*expr.query);
}

void fixLiterals(Source& source)
{
    if (source.query) fixLiterals(*source.query);
    if (source.left) fixLiterals(*source.left);
    if (source.right) fixLiterals(*source.right);
    if (source.on) fixLiterals(*source.on);
}

void fixLiterals(Query& query)
{
    for (const Select& arm : query.arms) {
        for (const SelectItem& item : arm.items)
            fixLiterals(*item.value);
        for (const SourcePtr& source : arm.from)
            fixLiterals(*source);
        if (arm.where) fixLiterals(*arm.where);
    }
}

class EntryOrder {
public:
    EntryOrder(const Schema& schema, Engine engine)
        : m_schema(schema)
        , m_engine(engine)
    {
    }

    void run(Query& query) const
    {
        Select& select = query.arms.front();
        const std::vector<Source*> sources = sourcesOf(select);
        if (!isPlain(query) || !areKnown(sources)) return;
        const std::vector<Key> keys = keysOf(select);
        for (const SelectItem& item : select.items)
            numberByEntry(*item.value, keys);
        addTo(query.orderBy, keys);
    }

private:
    const Table* tableOf(const Source& source) const
    {
        return source.form == Source::Form::Table ? m_schema.table(source.name) : nullptr;
    }

    /// Selects in brackets and known tables, each by a name of its own.
    bool areKnown(const std::vector<Source*>& sources) const
    {
        QStringList names;
        for (const Source* source : sources) {
            const bool known = source->form == Source::Form::Derived || tableOf(*source);
            if (!known || names.contains(nameOf(*source), Qt::CaseInsensitive)) return false;
            names.append(nameOf(*source));
        }
        return true;
    }

    /// A column that numbers the rows of one of a select's tables.
    struct Key {
        QString source;
        QString column;
        qsizetype place;
    };

    static void addTo(std::vector<OrderItem>& order, const std::vector<Key>& keys)
    {
        for (const Key& key : keys)
            order.push_back({makeColumn(key.source, key.column, key.place), false});
    }

    /// Rows that stand alike in the order of a `row_number` are numbered as they were entered. A `rank` gives
    /// them one number.
    static void numberByEntry(Expr& expr, const std::vector<Key>& keys)
    {
        for (const ExprPtr& part : expr.parts)
            numberByEntry(*part, keys);
        if (expr.name == u"row_number" && !expr.over.empty()) addTo(expr.over, keys);
    }

    /// Of all its tables, the leftmost first; none when that is a view that can't be written out.
    std::vector<Key> keysOf(Select& select) const
    {
        std::vector<Key> keys;
        const std::vector<Source*> sources = sourcesOf(select);
        for (Source* source : sources) {
            const bool first = source == sources.front();
            for (const QString& column : columnsOf(select, *source, first))
                keys.push_back({nameOf(*source), column, source->place});
            if (first && keys.empty()) return {};
        }
        return keys;
    }

    std::vector<QString> columnsOf(Select& select, Source& source, bool first) const
    {
        const Table* table = tableOf(source);
        if (!table) return {};
        if (table->view) return first ? writeOut(select, source) : std::vector<QString>();
        if (const Column* identity = table->identity()) return {identity->name};
        return {m_engine == Engine::Sqlite ? u"rowid"_s : EntryColumn.toString()};
    }

    /// The select of a view takes the view's place and brings the numbers of its tables along. The columns
    /// that they stand in; none where it can't.
    std::vector<QString> writeOut(Select& select, Source& source) const
    {
        Statement definition = parse(tableOf(source)->definition).statement;
        auto* view = std::get_if<CreateView>(&definition);
        if (!view || !isPlain(view->query)) return {};
        auto inner = std::make_unique<Query>(std::move(view->query));
        fixLiterals(*inner);
        const std::vector<QString> columns = bringEntries(inner->arms.front());
        if (columns.empty()) return {};
        nameStars(select);
        source.alias = nameOf(source);
        source.form = Source::Form::Derived;
        source.query = std::move(inner);
        return columns;
    }

    std::vector<QString> bringEntries(Select& select) const
    {
        std::vector<QString> columns;
        for (const Key& key : keysOf(select)) {
            columns.push_back(EntryColumn.toString() + QString::number(columns.size() + 1));
            select.items.push_back({makeColumn(key.source, key.column, key.place), columns.back()});
        }
        return columns;
    }

    /// Without the number that a view is going to bring.
    void nameStars(Select& select) const
    {
        std::vector<SelectItem> items;
        for (SelectItem& item : select.items) {
            const Expr& star = *item.value;
            if (star.op != Op::Star) {
                items.push_back(std::move(item));
                continue;
            }
            for (const Source* source : sourcesOf(select))
                if (star.qualifier.isEmpty() || sameText(star.qualifier, nameOf(*source)))
                    nameColumns(*source, star.place, items);
        }
        select.items = std::move(items);
    }

    void nameColumns(const Source& source, qsizetype place, std::vector<SelectItem>& items) const
    {
        const Table* table = tableOf(source);
        if (!table) return items.push_back({makeStar(nameOf(source), place), {}});
        for (const Column& column : table->columns)
            items.push_back({makeColumn(nameOf(source), column.name, place), {}});
    }

    const Schema& m_schema;
    Engine m_engine;
};

} // namespace

void orderByEntry(Query& query, const Schema& schema, Engine engine)
{
    EntryOrder(schema, engine).run(query);
}

} // namespace quilla::sql
