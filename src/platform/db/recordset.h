#pragma once

#include "platform/db/cursor.h"
#include "platform/db/value.h"

#include <memory>
#include <optional>

namespace quilla::sql {
struct ShapeStatement;
}

namespace quilla {

/// Keyset counts its rows and may be walked again; forward is read once, row by row, without holding
/// the whole result in memory (a forward recordset has no count until its end).
enum class CursorType { Keyset, Forward };

/// The rows of a select. Stands on its first row after opening. Keeps nothing of its connection when
/// it is a keyset; a forward one must not outlive it.
class Recordset {
public:
    class Source; ///< what a driver gives

    Recordset();
    explicit Recordset(std::unique_ptr<Source> source);
    ~Recordset();
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;

    /// -1 for a forward recordset.
    qsizetype recordCount() const;
    bool eof() const;
    void next();
    void first(); ///< keyset only

    int fieldCount() const;
    QString fieldName(int index) const;
    sql::Kind fieldKind(int index) const;
    /// Where the first field of that name stands, without case; nullopt where there is none.
    std::optional<int> findField(QStringView name) const;
    /// The same; throws `NoSuchField` where there is none.
    int needField(QStringView name) const;

    /// Of the current row. Throws `NoCurrentRow` at the end, `NoSuchField` for an unknown field. Names
    /// compare without case; of two fields of the same name the first. What is returned holds until the
    /// recordset moves.
    const Value& field(int index) const;
    const Value& field(QStringView name) const;
    /// The same as the engine handed it over, for long lists that make few values of many fields. Holds until
    /// a field of another row is asked for.
    Cell cell(int index) const;

    /// The rows behind the current row of a shaped result, by the name that the statement gave them; a
    /// keyset of its own. Throws `NoCurrentRow` at the end, `NoSuchField` where there is none of that name.
    Recordset child(QStringView name) const;

private:
    friend Recordset shapeRecords(Recordset rows, const sql::ShapeStatement& shape);

    std::unique_ptr<Source> m_source;
};

/// Puts the rows of a keyset into the groups that `shape` asks for: an outer row of the grouping columns for
/// each, with its rows behind it. Keys compare as the database compares texts, null with null; groups come in
/// the order of their first rows. Throws `NoSuchField` for a grouping column that the rows do not have.
Recordset shapeRecords(Recordset rows, const sql::ShapeStatement& shape);

} // namespace quilla
