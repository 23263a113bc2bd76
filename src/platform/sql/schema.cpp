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

const Table* Schema::table(QStringView name) const
{
    const auto found = m_byName.constFind(name.toString().toLower());
    return found == m_byName.constEnd() ? nullptr : &m_tables[*found];
}

} // namespace quilla::sql
