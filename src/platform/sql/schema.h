#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

namespace quilla::sql {

/// What a column or an expression holds, as far as the dialects differ over it.
enum class Kind { Unknown, Text, Integer, Decimal, Bit, Date };

struct Column {
    QString name;
    Kind kind = Kind::Unknown;
    int width = 0; ///< characters of a text, digits of a decimal; 0 where it does not matter
    int scale = 0; ///< digits after the point of a decimal
    int bytes = 0; ///< of a whole number, which limit its range; 0 where it is not known
    bool identity = false; ///< numbered by the database, never twice the same
    bool nullable = true;
    QString fallback; ///< the default, as T-SQL text; empty for none
};

/// One of the tables that a view puts together by "union all", with the columns that it takes from there.
struct UnionArm {
    QString table;
    std::vector<QString> columns;
};

/// A table or a view; names compare without case.
struct Table {
    QString name;
    std::vector<Column> columns;
    bool view = false;
    std::vector<UnionArm> unionOf; ///< of a view that is whole tables put together; else empty
    QString definition; ///< of a view, as T-SQL
    std::vector<QString> indexed {}; ///< the first column of each index

    const Column* column(QStringView name) const;
    /// The column that the database numbers; null for none.
    const Column* identity() const;
    bool isIndexedBy(QStringView column) const;
};

/// The kinds of all columns, read from the T-SQL that creates the tables. The translator asks it.
class Schema {
public:
    /// A table of the same name takes the place of the earlier one.
    void add(Table table);
    /// Takes note of an index. A table that isn't there stays unknown.
    void addIndex(QStringView table, const QString& firstColumn);
    const Table* table(QStringView name) const;
    const std::vector<Table>& tables() const { return m_tables; }

private:
    std::vector<Table> m_tables;
    QHash<QString, std::size_t> m_byName; ///< lower case
};

/// One statement of a script.
struct ScriptPart {
    QString text;
    int line = 1; ///< where it begins in the script
};

/// The statements of a script, which are separated by lines "go". A part that holds nothing but blanks
/// and comments is left out.
std::vector<ScriptPart> splitScript(const QString& script);

/// Reads `create table`, `create view` and `create index` statements, separated by lines "go".
/// Throws `Error` with place and word where the text is not understood.
Schema readSchema(const QString& tsql);

/// As above, on top of what `known` holds already: the views of a base whose tables stand in another script.
Schema readSchema(const QString& tsql, Schema known);

} // namespace quilla::sql
