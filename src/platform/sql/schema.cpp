#include "platform/sql/schema.h"

#include <algorithm>

namespace quilla::sql {

const Column* Table::column(QStringView wanted) const
{
    for (const Column& each : columns)
        if (wanted.compare(each.name, Qt::CaseInsensitive) == 0) return &each;
    return nullptr;
}

const Column* Table::identity() const
{
    const auto found = std::ranges::find_if(columns, &Column::identity);
    return found == columns.end() ? nullptr : &*found;
}

bool Table::isIndexedBy(QStringView column) const
{
    return std::ranges::any_of(
        indexed, [&](const QString& first) { return column.compare(first, Qt::CaseInsensitive) == 0; });
}

void Schema::add(Table table)
{
    const QString key = table.name.toLower();
    const auto found = m_byName.constFind(key);
    if (found != m_byName.constEnd()) {
        m_tables[*found] = std::move(table);
        return;
    }
    m_byName.insert(key, m_tables.size());
    m_tables.push_back(std::move(table));
}

void Schema::addIndex(QStringView table, const QString& firstColumn)
{
    const auto found = m_byName.constFind(table.toString().toLower());
    if (found != m_byName.constEnd()) m_tables[*found].indexed.push_back(firstColumn);
}

const Table* Schema::table(QStringView name) const
{
    const auto found = m_byName.constFind(name.toString().toLower());
    return found == m_byName.constEnd() ? nullptr : &m_tables[*found];
}

} // namespace quilla::sql
