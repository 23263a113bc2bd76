#include "platform/sql/entry_order.h"

#include "platform/core/text.h"
#include "platform/sql/parser.h"

#include <algorithm>

namespace quilla::sql {

namespace {

const QString EntryOfView = u"qj_entry"_s; ///< no column of a library has this name

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
    return query.arms.size() == 1 && query.orderBy.empty() && !select.from.empty() && !select.top
        && !select.distinct && select.groupBy.empty() && !select.having
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
        for (Source* source : sources) {
            const bool first = source == sources.front();
            std::vector<QString> keys = keysOf(*source);
            if (first && isView(*source) && writeOut(select, *source)) keys = {EntryOfView};
            if (first && keys.empty()) return;
            for (const QString& key : keys)
                query.orderBy.push_back({makeColumn(nameOf(*source), key, source->place), false});
        }
    }

private:
    const Table* tableOf(const Source& source) const
    {
        return source.form == Source::Form::Table ? m_schema.table(source.name) : nullptr;
    }
    bool isView(const Source& source) const
    {
        const Table* table = tableOf(source);
        return table && table->view;
    }

    /// Known tables, each by a name of its own.
    bool areKnown(const std::vector<Source*>& sources) const
    {
        QStringList names;
        for (const Source* source : sources) {
            if (!tableOf(*source) || names.contains(nameOf(*source), Qt::CaseInsensitive)) return false;
            names.append(nameOf(*source));
        }
        return true;
    }

    /// The columns that tell the order of a table's rows; none for a view.
    std::vector<QString> keysOf(const Source& source) const
    {
        const Table* table = tableOf(source);
        if (!table || table->view) return {};
        const auto identity = std::ranges::find_if(table->columns, &Column::identity);
        if (identity != table->columns.end()) return {identity->name};
        if (m_engine == Engine::Sqlite) return {u"rowid"_s};
        return table->entryOrder.empty() ? std::vector {u"ctid"_s} : table->entryOrder;
    }

    /// The select of a view takes the view's place and brings the number of its leftmost table along. False
    /// where it can't.
    bool writeOut(Select& select, Source& source) const
    {
        Statement definition = parse(tableOf(source)->definition).statement;
        auto* view = std::get_if<CreateView>(&definition);
        if (!view || !isPlain(view->query)) return false;
        auto inner = std::make_unique<Query>(std::move(view->query));
        fixLiterals(*inner);
        if (!bringEntry(inner->arms.front())) return false;
        nameStars(select);
        source.alias = nameOf(source);
        source.form = Source::Form::Derived;
        source.query = std::move(inner);
        return true;
    }

    bool bringEntry(Select& select) const
    {
        Source& first = *sourcesOf(select).front();
        std::vector<QString> keys = keysOf(first);
        if (isView(first) && writeOut(select, first)) keys = {EntryOfView};
        if (keys.size() != 1) return false;
        select.items.push_back({makeColumn(nameOf(first), keys.front(), first.place), EntryOfView});
        return true;
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
                    for (const Column& column : tableOf(*source)->columns)
                        items.push_back({makeColumn(nameOf(*source), column.name, star.place), {}});
        }
        select.items = std::move(items);
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
