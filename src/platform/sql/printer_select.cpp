#include "platform/sql/printer.h"

#include "platform/core/text.h"

namespace quilla::sql {

void Printer::query(const Query& query, bool inner)
{
    const bool combined = query.arms.size() > 1;
    for (const Select& arm : query.arms) {
        if (&arm != &query.arms.front()) write(arm.all ? u" UNION ALL " : u" UNION ");
        select(arm, inner || combined);
    }
    if (!query.orderBy.empty()) {
        write(u" ORDER BY ");
        list(query.orderBy, [this](const OrderItem& item) { orderItem(item); });
    }
    limit(query);
}

void Printer::select(const Select& select, bool inner)
{
    write(select.distinct ? u"SELECT DISTINCT " : u"SELECT ");
    top(select);
    list(select.items, [&](const SelectItem& each) { item(each, select, inner); });
    if (!select.from.empty()) {
        write(u" FROM ");
        list(select.from, [this](const SourcePtr& each) { source(*each); });
    }
    if (select.where) {
        write(u" WHERE ");
        expression(*select.where);
    }
    if (!select.groupBy.empty()) {
        write(u" GROUP BY ");
        list(select.groupBy, [this](const ExprPtr& each) { collated(*each, Lowest); });
    }
    if (select.having) {
        write(u" HAVING ");
        expression(*select.having);
    }
}

void Printer::top(const Select& select)
{
    if (select.top) write(u"TOP "_s + select.top->text + u" "_s);
}

void Printer::limit(const Query&) { }

void Printer::item(const SelectItem& item, const Select&, bool)
{
    expression(*item.value);
    if (!item.alias.isEmpty()) write(u" AS "_s + name(item.alias));
}

void Printer::source(const Source& source)
{
    switch (source.form) {
    case Source::Form::Table:
        write(name(source.name));
        break;
    case Source::Form::Derived:
        write(u"(");
        query(*source.query, true);
        write(u")");
        break;
    case Source::Form::Join:
        return join(source);
    }
    if (!source.alias.isEmpty()) write(u" AS "_s + name(source.alias));
}

void Printer::join(const Source& source_)
{
    static constexpr QStringView Words[]
        = {u" JOIN ", u" LEFT JOIN ", u" RIGHT JOIN ", u" FULL JOIN ", u" CROSS JOIN "};
    source(*source_.left); // joins lean to the left, so brackets around this one mean nothing
    write(Words[int(source_.join)]);
    const bool nested = source_.right->form == Source::Form::Join;
    if (nested) write(u"(");
    source(*source_.right);
    if (nested) write(u")");
    if (!source_.on) return;
    write(u" ON ");
    expression(*source_.on);
}

void Printer::orderItem(const OrderItem& item)
{
    if (item.value->position)
        write(item.value->text);
    else
        collated(*item.value, Lowest);
    if (item.descending) write(u" DESC");
}

} // namespace quilla::sql
