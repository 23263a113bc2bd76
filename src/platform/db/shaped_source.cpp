#include "platform/core/error.h"
#include "platform/core/text_order.h"
#include "platform/db/sources.h"
#include "platform/sql/shape_statement.h"

#include <QHash>

namespace quilla {

namespace {

using Groups = std::vector<std::vector<qsizetype>>; ///< of each group its rows

/// Some of the rows of a keyset, which they share.
class PartSource final : public Recordset::Source {
public:
    PartSource(std::shared_ptr<const KeysetSource> all, std::vector<qsizetype> rows)
        : Source(all->sharedFields())
        , m_all(std::move(all))
        , m_rows(std::move(rows))
    {
    }

    qsizetype recordCount() const override { return qsizetype(m_rows.size()); }
    bool eof() const override { return m_row >= m_rows.size(); }
    Cell cell(int column) override { return m_all->rows().cell(m_rows[m_row], column); }

private:
    void moveNext() override { ++m_row; }
    void moveFirst() override { m_row = 0; }

    std::shared_ptr<const KeysetSource> m_all;
    std::vector<qsizetype> m_rows;
    std::size_t m_row = 0;
};

/// The outer level: the grouping columns, and behind each row its part of the keyset.
class ShapedSource final : public Recordset::Source {
public:
    ShapedSource(
        std::shared_ptr<const KeysetSource> all, std::vector<int> columns, QString child, Groups groups)
        : Source(fieldsOf(*all, columns))
        , m_all(std::move(all))
        , m_columns(std::move(columns))
        , m_child(std::move(child))
        , m_groups(std::move(groups))
    {
    }

    qsizetype recordCount() const override { return qsizetype(m_groups.size()); }
    bool eof() const override { return m_row >= m_groups.size(); }

    Cell cell(int column) override
    {
        return m_all->rows().cell(m_groups[m_row].front(), m_columns[std::size_t(column)]);
    }

    Recordset child(QStringView name) const override
    {
        if (name.compare(m_child, Qt::CaseInsensitive) != 0) return Source::child(name);
        if (eof()) throw Error(ErrorNumber::NoCurrentRow, u"Recordset"_s, u"没有当前记录。"_s);
        return Recordset(std::make_unique<PartSource>(m_all, m_groups[m_row]));
    }

private:
    static Fields fieldsOf(const KeysetSource& all, const std::vector<int>& columns)
    {
        auto fields = std::make_shared<std::vector<Field>>();
        for (const int column : columns)
            fields->push_back(all.fields()[std::size_t(column)]);
        return fields;
    }

    void moveNext() override { ++m_row; }
    void moveFirst() override { m_row = 0; }

    std::shared_ptr<const KeysetSource> m_all;
    std::vector<int> m_columns; ///< of the keyset
    QString m_child;
    Groups m_groups;
    std::size_t m_row = 0;
};

/// The same for values that the database holds to be the same; null is not the empty text.
QByteArray groupKey(const Value& value)
{
    return value.isNull() ? QByteArray() : orderKey(value.text());
}

Groups groupRows(KeysetSource& all, const std::vector<int>& columns)
{
    Groups groups;
    QHash<QByteArrayList, std::size_t> known;
    all.first();
    for (qsizetype row = 0; !all.eof(); all.next(), ++row) {
        QByteArrayList key;
        for (const int column : columns)
            key.append(groupKey(all.field(column)));
        const std::size_t group = known.value(key, groups.size());
        if (group == groups.size()) {
            known.insert(key, group);
            groups.emplace_back();
        }
        groups[group].push_back(row);
    }
    return groups;
}

} // namespace

Recordset shapeRecords(Recordset rows, const sql::ShapeStatement& shape)
{
    auto* const keyset = dynamic_cast<KeysetSource*>(rows.m_source.get());
    if (!keyset) throw Error(ErrorNumber::NotUnderstood, u"Recordset"_s, u"该语句没有可以分组的记录。"_s);
    std::vector<int> columns;
    for (const QString& name : shape.groupBy)
        columns.push_back(rows.needField(name));
    rows.m_source.release();
    const std::shared_ptr<KeysetSource> all(keyset);
    Groups groups = groupRows(*all, columns);
    return Recordset(std::make_unique<ShapedSource>(all, std::move(columns), shape.child, std::move(groups)));
}

} // namespace quilla
